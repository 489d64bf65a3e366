// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/SchemeChoice.h"

#include "platform/values/Settings.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QPalette>

#include <algorithm>

namespace {

const QString choiceKey = QStringLiteral("Window/Scheme");

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString schemeName = QStringLiteral("color-scheme");
constexpr int portalTimeoutMs = 300;
constexpr unsigned preferDark = 1;
constexpr unsigned preferLight = 2;

ColorSet::Scheme schemeOf(const QPalette& palette)
{
    const bool hasDesktop = !qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP");
    const bool isLight = palette.color(QPalette::Window).lightness() >
                         palette.color(QPalette::WindowText).lightness();
    return isLight && hasDesktop ? ColorSet::Scheme::Light : ColorSet::Scheme::Dark;
}

} // namespace

QStringList SchemeChoice::names()
{
    return {QStringLiteral("desktop"), QStringLiteral("dark"), QStringLiteral("light")};
}

SchemeChoice::SchemeChoice(std::optional<Choice> forced, QObject* parent)
    : QObject(parent)
    , m_ofPalette(schemeOf(QApplication::palette()))
{
    const values::Settings settings;
    const int kept = int(names().indexOf(settings.value(choiceKey).toString()));
    m_choice = forced.value_or(static_cast<Choice>(std::max(kept, 0)));
    askPortal();
    apply();
}

void SchemeChoice::askPortal()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(portalService, portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                SLOT(takePortalSetting(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(portalService, portalPath,
                                                           portalInterface, QStringLiteral("Read"));
    question << appearanceGroup << schemeName;
    const QDBusMessage answer = bus.call(question, QDBus::Block, portalTimeoutMs);
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty())
        takePortalSetting(appearanceGroup, schemeName,
                          answer.arguments().constFirst().value<QDBusVariant>());
}

void SchemeChoice::takePortalSetting(const QString& group, const QString& key,
                                     const QDBusVariant& value)
{
    if (group != appearanceGroup || key != schemeName)
        return;
    QVariant setting = value.variant();
    if (setting.canConvert<QDBusVariant>()) // an answer wraps it in another variant
        setting = setting.value<QDBusVariant>().variant();
    m_ofPortal.reset();
    if (setting.toUInt() == preferDark)
        m_ofPortal = ColorSet::Scheme::Dark;
    else if (setting.toUInt() == preferLight)
        m_ofPortal = ColorSet::Scheme::Light;
    apply();
}

ColorSet::Scheme SchemeChoice::scheme() const
{
    if (m_choice == Choice::Desktop)
        return m_ofPortal.value_or(m_ofPalette);
    return m_choice == Choice::Dark ? ColorSet::Scheme::Dark : ColorSet::Scheme::Light;
}

void SchemeChoice::choose(Choice choice)
{
    m_choice = choice;
    keep();
    apply();
}

void SchemeChoice::noticeColors()
{
    const ColorSet::Scheme found = ColorSet::Instance().GetScheme();
    if (found == scheme())
        return;
    m_choice = found == ColorSet::Scheme::Dark ? Choice::Dark : Choice::Light;
    keep();
    emit changed();
}

void SchemeChoice::keep() const
{
    values::Settings settings;
    settings.setValue(choiceKey, names()[static_cast<int>(m_choice)]);
}

void SchemeChoice::apply()
{
    ColorSet::Instance().SetScheme(scheme());
    emit changed();
}
