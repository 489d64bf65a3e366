// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/PlainText.h"

#include <string>

namespace {

char32_t shown(char32_t character)
{
    constexpr char32_t zeroWidthNonJoiner =
        0x200c; // shapes letters of some scripts, as the joiner does
    constexpr char32_t zeroWidthJoiner = 0x200d;
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
    // One more character tells that there is more; each may take two UTF-16 units.
    std::u32string characters = text.left(2 * (maxLength + 1)).toStdU32String();
    const bool isLong = characters.size() > std::size_t(maxLength);
    if (isLong) {
        characters.resize(std::size_t(maxLength));
        characters.back() = 0x2026; // an ellipsis
    }
    for (char32_t& character : characters)
        character = shown(character);
    return QString::fromStdU32String(characters);
}
