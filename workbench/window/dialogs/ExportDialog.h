// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/window/panes/ViewExport.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QSpinBox;

/// Asks which view to export, in which format, size and file, and exports it.
class ExportDialog : public QDialog
{
    Q_OBJECT
public:
    /// @param index  of the pane that is proposed.
    ExportDialog(const ViewExport& exporter, const ViewPanes& panes, std::size_t index,
                 QWidget* parent);

private:
    void build();
    void proposeSize();
    void showFormat();
    void chooseFile();
    QString askForFile();
    Result<void> write(const QString& name);
    ViewExport::Format format() const;

    const ViewExport& m_export;
    const ViewPanes& m_panes;
    QComboBox* m_view;
    QComboBox* m_format;
    QCheckBox* m_footer;
    QSpinBox* m_width;
    QSpinBox* m_height;
    QDoubleSpinBox* m_scale;
    QLabel* m_trouble;
};
