// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/gui/ColorSet.h"

#include <QObject>
#include <QStringList>

#include <optional>

class QDBusVariant;

/// The scheme of the colours: dark, light, or that of the desktop, which is then followed when it
/// changes. The desktop says it by its settings portal (org.freedesktop.appearance, color-scheme),
/// else by the lightness of the application's palette; where there is no desktop, the scheme is
/// dark.
///
/// What the user chooses is kept in the settings file. A change of the ColorSet by another hand
/// counts as a choice, too. GUI thread only.
class SchemeChoice : public QObject
{
    Q_OBJECT
public:
    enum class Choice { Desktop, Dark, Light };
    /// Names of the choices on the command line and in the settings file, in order.
    static QStringList names();

    /// Makes it so. To be created before the application's palette is changed.
    /// @param forced  counts instead of what was kept, and is not kept.
    explicit SchemeChoice(std::optional<Choice> forced, QObject* parent = nullptr);

    Choice choice() const { return m_choice; }
    void choose(Choice choice);
    /// Looks whether somebody else has changed the scheme.
    void noticeColors();

signals:
    void changed();

private slots:
    void takePortalSetting(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void askPortal();
    void keep() const;
    void apply();
    ColorSet::Scheme scheme() const;

    Choice m_choice = Choice::Desktop;
    ColorSet::Scheme m_ofPalette;
    std::optional<ColorSet::Scheme> m_ofPortal;
};
