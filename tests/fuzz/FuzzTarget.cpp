// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "ReadBack.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    readBack(QStringLiteral(ORVANE_FUZZ_FILE),
             QByteArray(reinterpret_cast<const char*>(bytes), static_cast<int>(size)));
    return 0;
}
