// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glwidgets/StandardMeasRuler.h"
#include "views/ValueObservingPtr.h"
#include "views/ValuePtr.h"

#include <QRect>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

class AxisHandler;
class DiagramCaption;
class GLBaseWidget;
class GLTimeDiagram;
class QMenu;
class XAxisWidget;
class axisDefinition;
template<class View>
struct ViewFrame;

// clang-format off
/// Time diagram with caption bar, X axis and measurement ruler. It feeds itself from values of the
/// application's value tree, or takes samples directly (FillData).
///
/// The host binds values by path, in any order and at any time:
///
///   role            type                    meaning
///   --------------  ----------------------  ---------------------------------------------------
///   Data1           ValueList<double>       samples of one notification
///   BaudrateData    ValueList<double>       markers beside the samples: non-zero where a segment
///                                           starts, its value the segment's number of samples
///   HasChanged      Value<bool>             trigger: setting it reads the lists, whatever it holds
///   X/YAxisMin/Max  ValueNumeric<double>    ends of the axes
///   Baudrate        ValueNumeric<double>    samples per unit of the X axis; 0 paints nothing
///
/// A value that serves two roles acts on the first of these only: X min, X max, Y min, Y max,
/// baud rate. The log then has a warning, once, in the category orvane.views.
///
/// Each segment becomes one trace, see GLTimeDiagram::AddData. A segment may span notifications: it
/// ends at the next marker, or with the notification that completes it. Samples beyond the end of
/// the marker list have no marker; markers beyond the samples are ignored. Without any marker
/// nothing ends the open segment, which keeps all samples that come and grows without bound.
///
/// A setter answers whether a value of the right type is bound now. On false the role is unbound,
/// even if it was bound before. Setting the trigger, an axis limit or the baud rate applies the
/// value's content at once. A value that is removed from the tree, or destroyed, unbinds itself. To
/// bind a value that does not exist yet, see values::Binding.
///
/// While the user pauses the view, triggers are ignored and their data are lost; limits and baud
/// rate still apply. GUI thread only.
class ORVANE_API VCGLTimeDiagram : public GLLayout, public IObserver
// clang-format on
{
    Q_OBJECT
public:
    explicit VCGLTimeDiagram(QWidget* parent = nullptr);
    ~VCGLTimeDiagram() override;

    ///@{
    /// Bind a role to a value, see the table above.
    bool SetData1_ValuePath(const QString& path);
    bool SetBaudrateData_ValuePath(const QString& path);
    bool SetHasChangedTrigger_ValuePath(const QString& path);
    bool SetXAxisMin_ValuePath(const QString& path);
    bool SetXAxisMax_ValuePath(const QString& path);
    bool SetYAxisMin_ValuePath(const QString& path);
    bool SetYAxisMax_ValuePath(const QString& path);
    bool SetBaudrate_ValuePath(const QString& path);
    ///@}

    /// Takes the changes of the bound values.
    void Update(Observable* source, TChangeCode code) override;

    /// Adds one trace directly, also while paused. The open segment does not change.
    /// @param data     samples in order, swapped as by GLTimeDiagram::AddData.
    /// @param repaint  whether to repaint.
    void FillData(std::vector<double>& data, bool repaint);
    ///@{
    /// The same from contiguous memory, which is only read.
    /// @param data  count samples; may be null when count is 0.
    void FillData(const double* data, std::size_t count, bool repaint);
    void FillData(const float* data, std::size_t count, bool repaint);
    ///@}
    /// The samples of the traces that are kept, the oldest trace first: a copy.
    std::vector<std::vector<double>> GetTraces() const;
    /// Forgets all traces, the open segment, and the read-outs of the ruler; axes and settings
    /// stay. Repaints.
    void Clear();
    /// See GLTimeDiagram::AutoScale.
    void AutoScale();
    /// Sets the number of samples per unit of the X axis and repaints; 0 paints nothing.
    void SetBaudrate(double baudrate);

    ///@{
    /// Sets both ends of an axis and repaints, as bound limits do. Any numbers are taken as they
    /// are.
    void SetXAxisRange(double min, double max);
    void SetYAxisRange(double min, double max);
    ///@}
    ///@{
    /// Start and stop of the range that an axis shows, with the user's zoom.
    std::pair<double, double> GetXAxisRange() const;
    std::pair<double, double> GetYAxisRange() const;
    ///@}

    /// The diagram. Owned by the view; valid as long as the view.
    GLTimeDiagram* GetDiagram() const { return Diagram(); }
    /// The X axis below the diagram; empty once the view's destruction has begun.
    std::shared_ptr<XAxisWidget> GetXAxis() const { return m_xAxis; }
    /// The Y axis; shared with the diagram.
    std::shared_ptr<AxisHandler> GetYAxis() const;
    ///@{
    /// Label formatter, unit and grid positions of an axis. Do not set its range here:
    /// SetXAxisRange also repaints. Valid as long as the view.
    axisDefinition& GetXAxisDefinition() const;
    axisDefinition& GetYAxisDefinition() const;
    ///@}
    /// Unit in the read-outs of Y; empty for none.
    void SetYUnit(const QString& unit);
    /// The menu that a right click on the diagram opens; owned by the diagram. The host may add
    /// entries.
    QMenu* GetDiagramMenu();
    /// Same as GetDiagramMenu.
    QMenu* getContextMenu();
    /// The caption bar; owned by the view.
    DiagramCaption* GetToolbarCaption();
    /// Pauses or resumes, as the pause button does; emits the signals below on a change.
    void SetPaused(bool paused);
    /// Whether the view is paused.
    bool IsPaused() const;
    /// A few words at the right of the caption bar, cut where there is no room; empty for none.
    /// Shorter variants may follow, each after U+009C: the first that fits is shown.
    /// While the ruler has a read-out, it takes their place.
    void SetCaptionNote(const QString& text);

    ///@{
    /// Place of the diagram in the view, or in a picture of a size (RenderPicture), logical pixels.
    QRect GetPlotRect() const;
    QRect GetPlotRect(const QSize& size) const;
    ///@}
    /// The Qt widget that paints the diagram: the view itself. Overlays on the diagram belong on
    /// it. Alive as long as the view.
    QWidget* GetCanvas();

signals:
    /// The user resumed: triggers read data again.
    void StopButtonPressedForStop();
    /// The user paused: triggers are ignored.
    void StopButtonPressedForStart();

protected slots:
    /// @param takeData  whether triggers read data from now on, as the caption bar says.
    void slotPaused(bool takeData);

private:
    friend struct ViewFrame<VCGLTimeDiagram>;
    friend struct TestAccess;
    GLTimeDiagram* Diagram() const { return m_diagram.get(); }
    GLBaseWidget& DiagramWidget() const;
    bool Feed();

    DiagramCaption* m_pCaption = nullptr;
    std::shared_ptr<GLTimeDiagram> m_diagram;
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
    float m_segmentLength = 0.0F;                        // last non-zero marker
    std::vector<double> m_pending;                       // samples of the open segment
    std::vector<double> m_samples;                       // memory for copies of the lists...
    std::vector<std::pair<std::size_t, float>> m_starts; // ...while they are read
    StandardMeasRuler m_ruler;
};
