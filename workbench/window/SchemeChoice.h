// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/gui/ColorSet.h"

#include <QObject>
#include <QStringList>

#include <optional>

class QDBusVariant;

/// The colour scheme: dark, light, or that of the desktop, whose changes are then followed. It is
/// that of the desktop's settings portal (org.freedesktop.appearance, color-scheme), or follows the
/// lightness of the application's palette; without a desktop it is dark.
///
/// The user's choice is kept in the settings file. A change of the ColorSet from elsewhere counts
/// as a choice, too. GUI thread only.
class SchemeChoice : public QObject
{
    Q_OBJECT
public:
    enum class Choice { Desktop, Dark, Light };
    /// Names of the choices on the command line and in the settings file, in order.
    static QStringList names();

    /// Sets the scheme. Create it before the application's palette is changed.
    /// @param forced  overrides the kept choice, and is not kept.
    explicit SchemeChoice(std::optional<Choice> forced, QObject* parent = nullptr);

    Choice choice() const { return m_choice; }
    void choose(Choice choice);
    /// Notices when the scheme was changed from elsewhere.
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
