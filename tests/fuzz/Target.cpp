// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// A fuzz target of an attack.
#include "Attack.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count)
{
    Bytes input(bytes, count);
    ORVANE_ATTACK(input);
    return 0;
}
