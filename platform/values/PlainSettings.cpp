// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/PlainSettings.h"

#include <algorithm>
#include <optional>

namespace values {

namespace {

constexpr char16_t byteOrderMark = 0xfeff;

/// Takes up to a number of hexadecimal digits off the front of a text. Returns nothing when there
/// is no digit.
std::optional<QChar> takeHex(QStringView& text, int most)
{
    int count = 0;
    uint code = 0;
    for (; count < most && count < text.size(); ++count) {
        const char16_t digit = text[count].unicode();
        if (digit >= u'0' && digit <= u'9')
            code = 16 * code + (digit - u'0');
        else if ((digit | 0x20) >= u'a' && (digit | 0x20) <= u'f')
            code = 16 * code + (digit | 0x20u) - u'a' + 10;
        else
            break;
    }
    text = text.mid(count);
    return count > 0 ? std::optional<QChar>(QChar(code)) : std::nullopt;
}

/// A key or the name of a section: "\" stands for "/", "%41" and "%U0041" for "A".
std::optional<QString> plainKey(QStringView text)
{
    QString key;
    while (!text.isEmpty()) {
        const QChar next = text.front();
        text = text.mid(1);
        if (next == QLatin1Char('%')) {
            const bool isLong = text.startsWith(QLatin1Char('U'));
            const auto decoded = takeHex(isLong ? text = text.mid(1) : text, isLong ? 4 : 2);
            if (!decoded)
                return std::nullopt;
            key += *decoded;
        } else {
            key += next == QLatin1Char('\\') ? QLatin1Char('/') : next;
        }
    }
    return key.isEmpty() ? std::nullopt : std::optional<QString>(key);
}

/// Decodes the escape that follows a backslash.
std::optional<QChar> takeEscape(QStringView& text)
{
    static constexpr char names[] = R"(abfnrtv"?'\)";
    static constexpr char meanings[] = "\a\b\f\n\r\t\v\"?'\\";
    if (text.isEmpty())
        return std::nullopt;
    const QChar name = text.front();
    text = text.mid(1);
    if (name == QLatin1Char('x'))
        return takeHex(text, 4);
    if (name == QLatin1Char('0'))
        return QChar(0);
    const char* const known = std::find(names, std::end(names) - 1, name.toLatin1());
    return known == std::end(names) - 1
               ? std::nullopt
               : std::optional<QChar>(QLatin1Char(meanings[known - names]));
}

/// Decodes a text of the file: "@@" means "@"; a single "@" begins an object, which is refused.
std::optional<QString> plainText(const QString& text)
{
    if (!text.startsWith(QLatin1Char('@')))
        return text;
    return text.startsWith(QLatin1String("@@")) ? std::optional<QString>(text.mid(1))
                                                : std::nullopt;
}

/// Decodes the part after the "=" of a line: a text, or several separated by commas.
std::optional<QVariant> plainValue(QStringView rest)
{
    QStringList texts{QString()};
    bool isQuoted = false;
    int kept = 0; // of the last text, by quotes
    while (!rest.isEmpty()) {
        const QChar next = rest.front();
        rest = rest.mid(1);
        QString& text = texts.back();
        if (next == QLatin1Char(';') && !isQuoted)
            break; // a comment
        if (next == QLatin1Char('"')) {
            isQuoted = !isQuoted;
            kept = int(text.size());
        } else if (next == QLatin1Char('\\')) {
            const auto meant = takeEscape(rest);
            if (!meant)
                return std::nullopt;
            text += *meant;
            kept = int(text.size());
        } else if (isQuoted || !(next == QLatin1Char(',') || next.isSpace())) {
            text += next;
            kept = int(text.size());
        } else if (next == QLatin1Char(',')) {
            text.truncate(kept);
            texts += QString();
            kept = 0;
        } else if (!text.isEmpty()) {
            text += next; // unless it is at an end
        }
    }
    texts.back().truncate(kept);
    if (isQuoted)
        return std::nullopt;
    if (texts == QStringList{QStringLiteral("@Invalid()")}) // how QSettings writes an empty list
        return QVariant();
    for (QString& text : texts) {
        const auto plain = plainText(text);
        if (!plain)
            return std::nullopt;
        text = *plain;
    }
    return texts.size() == 1 ? QVariant(texts.front()) : QVariant(texts);
}

bool isBroken(const QString& line)
{
    return line.contains(QChar(QChar::ReplacementCharacter)) || line.contains(QChar(0));
}

/// Group of the keys after a title. "General" means no group, "%General" the group of this name.
std::optional<QString> plainGroup(const QString& line)
{
    if (isBroken(line) || !line.endsWith(QLatin1Char(']')))
        return std::nullopt;
    const QString title = line.mid(1, line.size() - 2);
    if (title.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0)
        return QString();
    if (title.compare(QLatin1String("%general"), Qt::CaseInsensitive) == 0)
        return title.mid(1);
    return plainKey(title);
}

/// Reads a line into values. Returns false when it is not a setting.
bool takeSetting(const QString& line, const QString& group, QVariantMap& values)
{
    const int equals = int(line.indexOf(QLatin1Char('=')));
    if (equals <= 0 || isBroken(line))
        return false;
    const auto key = plainKey(QStringView(line).left(equals).trimmed());
    const auto value = plainValue(QStringView(line).mid(equals + 1));
    if (!key || !value)
        return false;
    const QLatin1Char slash('/');
    const QString whole = group.isEmpty() ? *key : group + slash + *key;
    if (const int first = int(whole.indexOf(slash)); first > 0 && first == whole.size() - 1)
        return false; // a group, and in it a key without a name
    if (value->isValid())
        values.insert(whole, *value);
    return true;
}

QString section(const QString& key)
{
    const int slash = int(key.indexOf(QLatin1Char('/')));
    return slash < 0 ? QString() : key.left(slash);
}

/// Encodes a text with escapes that every reader knows. A digit after a hexadecimal escape is
/// escaped too, or it would continue the escape.
QByteArray written(const QString& text)
{
    QByteArray result;
    bool needsQuotes = text.isEmpty() || text.front().isSpace() || text.back().isSpace();
    bool isAfterHex = false;
    for (const QChar character :
         text.startsWith(QLatin1Char('@')) ? QLatin1Char('@') + text : text) {
        const char16_t code = character.unicode();
        const bool isHexDigit = code < 0x80 && std::isxdigit(code);
        if (code < 0x20 || code > 0x7e || (isAfterHex && isHexDigit)) {
            result += "\\x" + QByteArray::number(code, 16);
            isAfterHex = true;
            continue;
        }
        isAfterHex = false;
        if (code == u'"' || code == u'\\')
            result += '\\';
        needsQuotes = needsQuotes || code == u',' || code == u';' || code == u'=';
        result += static_cast<char>(code);
    }
    return needsQuotes ? '"' + result + '"' : result;
}

QByteArray writtenKey(const QString& key)
{
    QByteArray result;
    for (const QChar character : key) {
        const char16_t code = character.unicode();
        if (code < 0x80 && (std::isalnum(code) || code == u'_' || code == u'-' || code == u'.'))
            result += static_cast<char>(code);
        else if (code == u'/')
            result += '\\';
        else if (code < 0x100)
            result += '%' + QByteArray::number(code + 0x100, 16).mid(1).toUpper();
        else
            result += "%U" + QByteArray::number(code + 0x10000, 16).mid(1).toUpper();
    }
    return result;
}

/// Encodes a value for the file; empty when it is not a plain value.
QByteArray writtenValue(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::QString:
        return written(value.toString());
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        QByteArrayList items;
        for (const QVariant& item : value.toList()) {
            const int type = item.userType();
            const bool isList = type == QMetaType::QVariantList || type == QMetaType::QStringList;
            items += isList ? QByteArray() : writtenValue(item);
            if (items.back().isEmpty())
                return {};
        }
        return items.join(", ");
    }
    default:
        return {};
    }
}

} // namespace

plainSettings::Content plainSettings::parse(const QByteArray& file)
{
    Content content;
    if (file.size() > mostBytes) {
        content.damaged += QStringLiteral("more than %1 bytes").arg(mostBytes);
        return content;
    }
    QString text = QString::fromUtf8(file.constData(), file.size());
    if (text.startsWith(QChar(byteOrderMark)))
        text.remove(0, 1);
    std::optional<QString> group = QString(); // none after a damaged title
    for (const QString& whole : text.split(QLatin1Char('\n'))) {
        const QString line = whole.trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char(';')) ||
            line.startsWith(QLatin1Char('#')))
            continue;
        const bool isTitle = line.startsWith(QLatin1Char('['));
        if (isTitle)
            group = plainGroup(line);
        if (isTitle ? !group : !group || !takeSetting(line, *group, content.values)) {
            constexpr int mostShown = 40; // characters of a line
            content.damaged += line.left(mostShown);
        }
    }
    return content;
}

QByteArray plainSettings::written(const QVariantMap& values)
{
    QMap<QString, QByteArray> sections;
    for (auto value = values.begin(); value != values.end(); ++value) {
        const QByteArray text = writtenValue(value.value());
        if (text.isEmpty())
            continue;
        const QString group = section(value.key());
        const QString key = group.isEmpty() ? value.key() : value.key().mid(group.size() + 1);
        sections[group] += writtenKey(key) + '=' + text + '\n';
    }
    QByteArrayList parts;
    for (auto part = sections.begin(); part != sections.end(); ++part) {
        // "General" is the section of keys without a group.
        const QByteArray title =
            part.key().isEmpty() ? QByteArray("General")
            : part.key().compare(QLatin1String("general"), Qt::CaseInsensitive) == 0
                ? "%" + part.key().toLatin1()
                : writtenKey(part.key());
        parts += '[' + title + "]\n" + *part;
    }
    return parts.join('\n');
}

} // namespace values
