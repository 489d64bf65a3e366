// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"

#include <QWidget>

class QCheckBox;
class QDoubleSpinBox;
class QGridLayout;
class QSpinBox;

/// Settings page of the diagrams: axis limits and grid switch, and on request buffer size and aging
/// time. Knows no diagram.
///
/// Each setter takes the editor's range, its value (clamped into the range, shown with two
/// decimals) and whether it can be edited. Getters return the value that the editor shows, also
/// when it is disabled. On a page without the row, the buffer size and aging operations do nothing
/// and return 0.
class ORVANE_API GLOrvanePropertyPage : public QWidget
{
    Q_OBJECT
public:
    /// @param name  object name in Latin-1; null for none.
    GLOrvanePropertyPage(QWidget* parent, const char* name, bool showBufferSize, bool showAging);
    ~GLOrvanePropertyPage() override;

    void SetXAxisMin(double minimum, double maximum, double value, bool enabled);
    void SetXAxisMax(double minimum, double maximum, double value, bool enabled);
    void SetYAxisMin(double minimum, double maximum, double value, bool enabled);
    void SetYAxisMax(double minimum, double maximum, double value, bool enabled);
    void SetBufferSize(int minimum, int maximum, int value, bool enabled);
    void SetAging(double minimum, double maximum, double value, bool enabled);
    void SetShowGrid(bool value, bool enabled);

    double GetXAxisMin() const;
    double GetXAxisMax() const;
    double GetYAxisMin() const;
    double GetYAxisMax() const;
    /// Samples.
    int GetBufferSize() const;
    /// Seconds.
    double GetAging() const;
    bool GetShowGrid() const;

private:
    friend struct TestAccess;
    template<class Editor>
    Editor* AddRow(QGridLayout* grid, const QString& text);

    QDoubleSpinBox* m_pXAxisMin = nullptr;
    QDoubleSpinBox* m_pXAxisMax = nullptr;
    QDoubleSpinBox* m_pYAxisMin = nullptr;
    QDoubleSpinBox* m_pYAxisMax = nullptr;
    QCheckBox* m_pShowGrid = nullptr;
    QSpinBox* m_pBufferSize = nullptr;
    QDoubleSpinBox* m_pAging = nullptr;
};
