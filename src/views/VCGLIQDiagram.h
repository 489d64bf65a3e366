// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glwidgets/StandardMeasRuler.h"
#include "views/ValueObservingPtr.h"
#include "views/ValuePtr.h"

#include <cstddef>
#include <memory>
#include <vector>

class AxisHandler;
class DiagramCaption;
class GLIQDiagram;
class XAxisWidget;
template<class View>
struct ViewFrame;

/// IQ diagram with caption bar, X axis and measurement ruler that feeds itself from values of the
/// application's value tree.
///
/// The host binds values by path, in any order and at any time:
///
///   role            type                       meaning
///   Data1           ValueList<double>          I samples of one notification
///   Data2           ValueList<double>          Q samples beside them
///   HasChanged      Value<bool>                trigger: any new content reads the lists
///   X/YAxisMin/Max  ValueNumeric<double>       ends of the axes
///
/// Each notification becomes one data set, see GLIQDiagram::AddData. Where the Q list is shorter
/// than the I list Q is 0; Q samples beyond the I list are ignored.
///
/// Each setter answers whether a value of the right type is bound now; on false the role is
/// unbound, also if it was bound before. Setting the trigger or an axis limit applies the value's
/// content at once. A value that is removed from the tree unbinds itself.
///
/// What the user zooms on one axis, the other follows, so that I and Q keep their scale to one
/// another; with Shift, it is that axis alone.
///
/// While paused by the caption bar, triggers are ignored and their data are lost; limits still
/// apply. GUI thread only.
class ORVANE_API VCGLIQDiagram : public GLLayout, public IObserver
{
    Q_OBJECT
public:
    explicit VCGLIQDiagram(QWidget* parent = nullptr);
    ~VCGLIQDiagram() override;

    bool SetData1_ValuePath(const QString& path);
    bool SetData2_ValuePath(const QString& path);
    bool SetHasChangedTrigger_ValuePath(const QString& path);
    bool SetXAxisMin_ValuePath(const QString& path);
    bool SetXAxisMax_ValuePath(const QString& path);
    bool SetYAxisMin_ValuePath(const QString& path);
    bool SetYAxisMax_ValuePath(const QString& path);

    /// A bound value changed.
    void Update(Observable* source, TChangeCode code) override;

    /// See GLIQDiagram::AutoScale.
    void AutoScale();
    /// The caption bar; owned by the view.
    DiagramCaption* GetToolbarCaption();
    /// Adds one data set directly, whether paused or not, and requests a repaint.
    /// @param data  I, Q, I, Q..., swapped as by GLIQDiagram::AddData.
    void AddData(std::vector<float>& data);
    /// Likewise, of values in contiguous memory, which are only read.
    /// @param count  of values, twice that of points.
    void AddData(const float* data, std::size_t count);
    void AddData(const double* data, std::size_t count);

    /// The diagram, owned by the view, which lives as long as the view does.
    GLIQDiagram* GetDiagram() const { return Diagram(); }
    /// The X axis below the diagram; empty from the view's destruction on.
    std::shared_ptr<XAxisWidget> GetXAxis() const { return m_xAxis; }
    /// The Y axis, sharing ownership with the diagram.
    std::shared_ptr<AxisHandler> GetYAxis() const;
    /// Sets the ends of an axis, as bound limits do.
    void SetXAxisRange(double min, double max);
    void SetYAxisRange(double min, double max);
    /// Forgets all data sets and the read-outs of the ruler; axes and settings stay.
    void Clear();

signals:
    /// Data are taken from now on: the user resumed.
    void StopButtonPressedForStop();
    /// No data are taken from now on: the user paused.
    void StopButtonPressedForStart();

protected slots:
    /// @param takeData  whether triggers read data from now on; what the caption bar's control
    /// says.
    void slotPaused(bool takeData);

private:
    friend struct ViewFrame<VCGLIQDiagram>;
    friend struct TestAccess;
    GLIQDiagram* Diagram() const { return m_diagram.get(); }
    bool Feed();

    DiagramCaption* m_pCaption = nullptr;
    std::shared_ptr<GLIQDiagram> m_diagram;
    std::shared_ptr<XAxisWidget> m_xAxis;
    values::ValuePtr<values::ValueList<double>> m_data1;
    values::ValuePtr<values::ValueList<double>> m_data2;
    values::ValueObservingPtr<values::Value<bool>> m_hasChangedTrigger;
    values::ValueObservingPtr<values::ValueNumeric<double>> m_xAxisMin;
    values::ValueObservingPtr<values::ValueNumeric<double>> m_xAxisMax;
    values::ValueObservingPtr<values::ValueNumeric<double>> m_yAxisMin;
    values::ValueObservingPtr<values::ValueNumeric<double>> m_yAxisMax;
    bool m_takeData = true;
    StandardMeasRuler m_ruler;
};
