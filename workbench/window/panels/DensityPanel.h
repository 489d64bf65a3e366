// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/window/density/DensityReadings.h"

#include <QWidget>

class CurveView;
class MaskChoice;
class QDoubleSpinBox;
class QLabel;
class QListWidget;
class WayBack;

/// The panel of the densities: mask and state of its test, the stretches of signal that passed at
/// the place that was clicked, histograms, bathtub and all figures.
class DensityPanel : public QWidget
{
    Q_OBJECT
public:
    struct Settings
    {
        double margin = 0.0; ///< of the mask, in the mask's units
        int stretch = -1;    ///< the one to be shown; -1 for none
    };

    explicit DensityPanel(QWidget* parent = nullptr);

    void show(const MaskChoice& masks);
    void show(const WayBack& way);
    /// @param figured        null while there are none.
    /// @param symbolSeconds  length of a symbol, for times in seconds; none for times in symbols.
    void show(const EyeFiguredPtr& figured, const DensityReadings& readings,
              std::optional<double> symbolSeconds);
    void showErrors(const density::ErrorVectors::Figures& errors, const DensityReadings& readings);

signals:
    /// The user changed something.
    void chosen(const DensityPanel::Settings& settings);

private:
    void addMask();
    void addWay();
    void choose();
    void showCurves(const EyeFiguredPtr& figured, std::optional<double> symbolSeconds);

    QLabel* m_mask;
    QDoubleSpinBox* m_margin;
    QLabel* m_verdict;
    QLabel* m_what;
    QListWidget* m_stretches;
    CurveView* m_levels;
    CurveView* m_crossings;
    CurveView* m_bathtub;
    QLabel* m_figures;
    QLabel* m_errors;
};
