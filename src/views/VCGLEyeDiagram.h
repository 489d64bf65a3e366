// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"
#include "platform/glbase/GLLayout.h"
#include "views/ValueObservingPtr.h"
#include "views/ValuePtr.h"

#include <cstddef>
#include <memory>
#include <vector>

class DiagramCaption;
class GLBaseWidget;
class GLEyeDiagram;
class QMenu;
class XAxisWidget;
template<class View>
struct ViewFrame;

/// Eye diagram with caption bar and X axis that feeds itself from values of the application's value
/// tree.
///
/// The host binds values by path, in any order and at any time:
///
///   role            type                       meaning
///   Data1           ValueList<double>          samples of one notification
///   BaudrateData    ValueList<double>          markers beside the samples: non-zero where a
///   segment
///                                              starts, its value the segment's number of samples
///   HasChanged      Value<bool>                trigger: any new content reads the lists
///   X/YAxisMin/Max  ValueNumeric<double>       ends of the axes
///   Baudrate        ValueNumeric<double>       changes nothing; all views are bound alike
///
/// Each segment becomes one trace, see GLEyeDiagram::AddData. A segment may span notifications: it
/// ends at the next marker, or at the end of a notification with which it is complete. A marker
/// list shorter than the sample list leaves the rest unmarked; markers beyond the samples are
/// ignored. Without any marker nothing ends the open segment: it keeps all samples that come, and
/// grows without bound.
///
/// Each setter answers whether a value of the right type is bound now; on false the role is
/// unbound, also if it was bound before. Setting the trigger, an axis limit or the baud rate
/// applies the value's content at once. A value that is removed from the tree unbinds itself.
///
/// While paused by the caption bar, triggers are ignored and their data are lost; limits and baud
/// rate still apply. The X axis always shows 0 to 1, whatever its limits are; the next paint sets
/// them back. GUI thread only.
class ORVANE_API VCGLEyeDiagram : public GLLayout, public IObserver
{
    Q_OBJECT
public:
    explicit VCGLEyeDiagram(QWidget* parent = nullptr);
    ~VCGLEyeDiagram() override;

    bool SetData1_ValuePath(const QString& path);
    bool SetBaudrateData_ValuePath(const QString& path);
    bool SetHasChangedTrigger_ValuePath(const QString& path);
    bool SetXAxisMin_ValuePath(const QString& path);
    bool SetXAxisMax_ValuePath(const QString& path);
    bool SetYAxisMin_ValuePath(const QString& path);
    bool SetYAxisMax_ValuePath(const QString& path);
    bool SetBaudrate_ValuePath(const QString& path);

    /// A bound value changed.
    void Update(Observable* source, TChangeCode code) override;

    /// See GLEyeDiagram::AutoScale.
    void AutoScale();
    /// The caption bar; owned by the view.
    DiagramCaption* GetToolbarCaption();
    /// The diagram's context menu; owned by the diagram.
    QMenu* getContextMenu();
    /// Adds one trace directly, whether paused or not, and leaves the open segment alone.
    /// @param data     samples, only read.
    /// @param repaint  whether to request a repaint.
    void FillData(std::vector<double>& data, bool repaint);
    /// Likewise, of samples in contiguous memory, which are only read.
    void FillData(const double* data, std::size_t count, bool repaint);
    void FillData(const float* data, std::size_t count, bool repaint);

    /// The diagram, owned by the view, which lives as long as the view does.
    GLEyeDiagram* GetDiagram() const { return Diagram(); }
    /// The X axis below the diagram; empty from the view's destruction on.
    std::shared_ptr<XAxisWidget> GetXAxis() const { return m_xAxis; }
    /// Sets the ends of an axis, as bound limits do. The X axis shows 0 to 1 all the same.
    void SetXAxisRange(double min, double max);
    void SetYAxisRange(double min, double max);
    /// Changes nothing; all views are set alike.
    void SetBaudrate(double baudrate);
    /// Forgets all traces and the open segment; axes and settings stay.
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
    friend struct ViewFrame<VCGLEyeDiagram>;
    friend struct TestAccess;
    GLEyeDiagram* Diagram() const { return m_pEyeDiagram; }
    bool Feed();

    DiagramCaption* m_pCaption = nullptr;
    std::shared_ptr<GLBaseWidget> m_eyeHost; // carries the diagram in the layout
    GLEyeDiagram* m_pEyeDiagram = nullptr;
    std::shared_ptr<XAxisWidget> m_xAxis;
    values::ValuePtr<values::ValueList<double>> m_data1;
    values::ValuePtr<values::ValueList<double>> m_baudrateData;
    values::ValueObservingPtr<values::Value<bool>> m_hasChangedTrigger;
    values::ValueObservingPtr<values::ValueNumeric<double>> m_xAxisMin;
    values::ValueObservingPtr<values::ValueNumeric<double>> m_xAxisMax;
    values::ValueObservingPtr<values::ValueNumeric<double>> m_yAxisMin;
    values::ValueObservingPtr<values::ValueNumeric<double>> m_yAxisMax;
    values::ValueObservingPtr<values::ValueNumeric<double>> m_baudrateValue;
    bool m_takeData = true;
    float m_segmentLength = 0.0F;  // last non-zero marker
    std::vector<double> m_pending; // samples of the open segment
};
