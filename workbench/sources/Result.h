// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <tl/expected.hpp>

/// What the user may give to get further. Front ends know how it is given, and say so.
enum class Hint {
    None,
    Format,              ///< the right format of the samples
    RawFormat,           ///< a format, where the file is raw samples
    SamplesAlone,        ///< a format, to read the samples without what describes them
    SampleRate,          ///< the sample rate, which is not known
    RightSampleRate,     ///< the sample rate, as the one that is known is wrong
    FormatAndSampleRate, ///< both, as neither is known
    NoFormat,            ///< no format, as the signal knows it
    NoColumns,           ///< no columns, as the signal has none
    SymbolRate           ///< the symbol rate, and FM where the frequency carries the symbols
};

/// A sentence for the user: what is amiss, where, and what to do.
struct Message
{
    Message() = default;
    Message(const QString& sentence, Hint hint = Hint::None)
        : sentence(sentence)
        , hint(hint)
    {}
    bool operator==(const Message& other) const
    {
        return sentence == other.sentence && hint == other.hint;
    }

    QString sentence;
    Hint hint = Hint::None;
};

/// What an operation yields, or why it could not be done.
template<class T>
using Result = tl::expected<T, Message>;

/// Why an operation could not be done.
inline tl::unexpected<Message> failure(const QString& sentence, Hint hint = Hint::None)
{
    return tl::unexpected<Message>(Message(sentence, hint));
}
