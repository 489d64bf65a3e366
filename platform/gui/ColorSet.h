// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/gui/IColorBase.h"
#include "platform/gui/IHasPropertyPage.h"

#include <QString>

#include <cstdint>
#include <map>
#include <vector>

/// The application's colours: two schemes with defaults for every number in use, editable on a page
/// of the properties dialog and kept in the settings file. GUI thread only.
///
/// Any change repaints every widget of the application. A number without a default is a mid grey.
class ORVANE_PLATFORM_API ColorSet : public IColorBase, public IHasPropertyPage
{
public:
    enum class Scheme { Dark, Light };
    struct Entry
    {
        ECOLOR number;
        const char* name; ///< Source text, translated in the context "ColorSet".
    };

    /// The application's set. It is never destroyed.
    static ColorSet& Instance();

    QColor& operator[](ECOLOR number) override;

    Scheme GetScheme() const { return m_scheme; }
    /// Switches to a scheme, with the user's own colours of that scheme.
    void SetScheme(Scheme scheme);
    /// The scheme's own colour for a number.
    static QColor DefaultColor(Scheme scheme, ECOLOR number);
    /// The numbers in use, in the order of the colour page.
    static const std::vector<Entry>& Entries();
    /// Replaces colours of a scheme (missing numbers return to their defaults) and repaints.
    void SetColors(Scheme scheme, const std::map<ECOLOR, QColor>& colors);
    /// Colours of a scheme as they are now, defaults included.
    std::map<ECOLOR, QColor> Colors(Scheme scheme) const;

    /// Reads scheme and colours from the settings file (see values::Persistant::StoreFile).
    void Load();
    /// Writes what differs from the defaults.
    void Save() const;

    QWidget* GetPropertyPage(QWidget* parent, const char* name) override;
    void slotAcceptPropertyChanges() override;
    void slotSetDefaultProperties() override;
    void slotRejectPropertyChanges() override;
    const QString& GetPropertyPagePath() override;

    /// Options of the colour page that an owner of a dialog may set before it opens it. Kept as
    /// given; the page has no options today.
    std::int32_t m_pageOptions = 0;

private:
    ColorSet();
    ~ColorSet() override;

    Scheme m_scheme = Scheme::Dark;
    std::map<ECOLOR, QColor> m_colors[2]; // what is in use, by scheme
    QString m_path;
};
