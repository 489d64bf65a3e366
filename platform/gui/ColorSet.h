// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/gui/IColorBase.h"
#include "platform/gui/IHasPropertyPage.h"

#include <QPointer>
#include <QString>

#include <cstdint>
#include <map>
#include <vector>

class ColorPage;

/// The application's colours: two schemes with defaults for every number in use, editable on a page
/// of the properties dialog and kept in the settings file. GUI thread only.
///
/// Contrast of the defaults (WCAG 2) in both schemes: label text to its ground 7:1 or more; traces,
/// markers and points to both ends of their background 4.5:1 or more; grid lines 1.3:1 to 2:1. The
/// colour-blind can tell traces, markers and points apart.
///
/// SetScheme, SetColors and Load repaint every widget of the application when they change a colour.
/// A number without a default is a mid grey.
class ORVANE_PLATFORM_API ColorSet : public IColorBase, public IHasPropertyPage
{
public:
    enum class Scheme { Dark, Light };
    /// A colour in use.
    struct Entry
    {
        ECOLOR number;
        const char* group; ///< Source text, translated in the context "ColorSet".
        const char* name;  ///< Translated alike; unique within the group.
        QRgb dark;         ///< Default in the dark scheme.
        QRgb light;        ///< Default in the light scheme.
    };

    /// The application's set; the first call reads it from the settings file. Never destroyed.
    static ColorSet& Instance();

    /// The colour in the current scheme. Writing through the reference does not repaint.
    QColor& operator[](ECOLOR number) override;

    /// The current scheme.
    Scheme GetScheme() const { return m_scheme; }
    /// Switches to a scheme, with the user's own colours of that scheme.
    void SetScheme(Scheme scheme);
    /// The scheme's own colour for a number.
    static QColor DefaultColor(Scheme scheme, ECOLOR number);
    /// The numbers in use, in the order of the colour page; the entries of a group are neighbours.
    static const std::vector<Entry>& Entries();
    /// Replaces colours of a scheme; missing numbers return to their defaults, as do invalid
    /// colours.
    void SetColors(Scheme scheme, const std::map<ECOLOR, QColor>& colors);
    /// Colours of a scheme as they are now, defaults included.
    std::map<ECOLOR, QColor> Colors(Scheme scheme) const;

    /// Reads scheme and colours from the settings file (see values::Persistant::StoreFile).
    void Load();
    /// Writes what differs from the defaults.
    void Save() const;

    QWidget* GetPropertyPage(QWidget* parent, const char* name) override;
    /// Takes the edits of the page that was created last, and saves. Nothing without a page.
    void slotAcceptPropertyChanges() override;
    void slotSetDefaultProperties() override;
    void slotRejectPropertyChanges() override;
    const QString& GetPropertyPagePath() override;

    /// Options of the colour page, set by the owner of a dialog before it opens. Kept; the page
    /// uses none today.
    std::int32_t m_pageOptions = 0;

private:
    ColorSet();
    ~ColorSet() override;
    std::map<ECOLOR, QColor>& Used(Scheme scheme) { return m_colors[static_cast<int>(scheme)]; }

    Scheme m_scheme = Scheme::Dark;
    std::map<ECOLOR, QColor> m_colors[2]; // by scheme; nodes stay, references to them are out
    QPointer<ColorPage> m_pPage;
    QString m_path;
};
