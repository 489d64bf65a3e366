// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/player/Hints.h"

QString Hints::words(Hint hint)
{
    switch (hint) {
    case Hint::None:
        break;
    case Hint::Format:
        return tr("give the right --format");
    case Hint::RawFormat:
        return tr("give --format where it is raw samples");
    case Hint::SamplesAlone:
        return tr("read the samples alone by --format");
    case Hint::SampleRate:
        return tr("give it by --sample-rate");
    case Hint::RightSampleRate:
        return tr("give the right one by --sample-rate");
    case Hint::FormatAndSampleRate:
        return tr("give --format and --sample-rate");
    case Hint::NoFormat:
        return tr("leave out --format");
    case Hint::NoColumns:
        return tr("leave out --columns");
    case Hint::SymbolRate:
        return tr("give it as a number, and where the frequency carries the symbols --demod fm");
    }
    return QString();
}

QString Hints::text(const Message& message)
{
    if (message.hint == Hint::None)
        return message.sentence;
    // If the sentence has an advice of its own, the hint is an alternative.
    const bool isAlternative = message.sentence.contains(QLatin1String("; "));
    return (isAlternative ? tr("%1, or %2") : tr("%1; %2"))
        .arg(message.sentence, words(message.hint));
}

QStringList Hints::texts(const QVector<Message>& messages)
{
    QStringList result;
    for (const Message& message : messages)
        result += text(message);
    return result;
}
