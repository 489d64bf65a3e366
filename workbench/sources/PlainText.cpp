// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/PlainText.h"

#include <QVector>

namespace {

uint shown(uint character)
{
    constexpr uint zeroWidthNonJoiner =
        0x200c; // shapes letters of some scripts, as the joiner does
    constexpr uint zeroWidthJoiner = 0x200d;
    if (QChar::isSpace(character))
        return ' ';
    if (character == zeroWidthNonJoiner || character == zeroWidthJoiner)
        return character;
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
        return QChar::ReplacementCharacter;
    default:
        return character;
    }
}

} // namespace

QString plainText(const QString& text, int maxLength)
{
    // One more tells that there is more; a character may be two of UTF-16.
    QVector<uint> characters = text.left(2 * (maxLength + 1)).toUcs4();
    const bool isLong = characters.size() > maxLength;
    if (isLong) {
        characters.resize(maxLength);
        characters.last() = 0x2026; // an ellipsis
    }
    for (uint& character : characters)
        character = shown(character);
    return QString::fromUcs4(characters.constData(), characters.size());
}
