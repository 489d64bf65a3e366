// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <tl/expected.hpp>

/// What the user may give to solve a problem. Front ends know how it is given, and say so.
enum class Hint {
    None,
    Format,              ///< the right format of the samples
    RawFormat,           ///< a format, if the file holds raw samples
    SamplesAlone,        ///< a format, to read the samples without their metadata
    SampleRate,          ///< the sample rate, which is not known
    RightSampleRate,     ///< the sample rate, as the known one is wrong
    FormatAndSampleRate, ///< both, as neither is known
    NoFormat,            ///< no format, as the signal has one
    NoColumns,           ///< no columns, as the signal has none
    SymbolRate           ///< the symbol rate, and FM where the frequency carries the symbols
};

/// A sentence for the user: what is wrong, where, and what to do.
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

/// The result of an operation, or why it failed.
template<class T>
using Result = tl::expected<T, Message>;

/// Makes a failed result.
inline tl::unexpected<Message> failure(const QString& sentence, Hint hint = Hint::None)
{
    return tl::unexpected<Message>(Message(sentence, hint));
}
