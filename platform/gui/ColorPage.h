// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/gui/ColorSet.h"

#include <QWidget>

#include <map>
#include <vector>

class QComboBox;
class QGridLayout;
class QToolButton;

/// The page of the properties dialog that edits the ColorSet: the scheme, and for each colour its
/// name, a button that shows it and opens a colour dialog, and a button back to the default.
///
/// Edits stay on the page until the ColorSet takes them. In a PropertyPagesFrame that happens at
/// each signalApply() of the frame.
class ColorPage : public QWidget
{
    Q_OBJECT
public:
    /// @param name  object name, may be null.
    ColorPage(QWidget* parent, const char* name);

    ColorSet::Scheme ShownScheme() const;
    /// The colours of a scheme that were edited since the last call.
    std::map<IColorBase::ECOLOR, QColor> TakeEdits(ColorSet::Scheme scheme);

private:
    struct Row
    {
        IColorBase::ECOLOR number;
        QString fullName;
        QToolButton* swatch;
        QToolButton* reset;
    };
    QWidget* CreateRows();
    void AddRow(QGridLayout* grid, const ColorSet::Entry& entry);
    void OpenColorDialog(const Row& row);
    void Edit(IColorBase::ECOLOR number, const QColor& color);
    QColor ShownColor(IColorBase::ECOLOR number) const;
    void ShowColors();
    void ResetAll();

    QComboBox* m_pScheme;
    std::vector<Row> m_rows;
    std::map<IColorBase::ECOLOR, QColor> m_edits[2]; // by scheme
};
