// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Settings files of any content: what is read is plain, and comes back as it was.
#include "platform/values/PlainSettings.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace values::plainSettings;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const QVariantMap read = parse(bytes).values;
    const Content again = parse(written(read));
    for (auto value = again.values.begin(); value != again.values.end(); ++value) {
        if (read.value(value.key()) != *value)
            std::abort();
    }
    if (!again.damaged.isEmpty())
        std::abort();
    return 0;
}
