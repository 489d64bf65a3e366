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
class GLIQDiagram;
class QMenu;
class XAxisWidget;
class axisDefinition;
template<class View>
struct ViewFrame;

// clang-format off
/// IQ diagram with caption bar, X axis and measurement ruler. It feeds itself from values of the
/// application's value tree, or takes samples directly (AddData).
///
/// The host binds values by path, in any order and at any time:
///
///   role            type                    meaning
///   --------------  ----------------------  ---------------------------------------------------
///   Data1           ValueList<double>       I samples of one notification
///   Data2           ValueList<double>       Q samples beside them
///   HasChanged      Value<bool>             trigger: setting it reads the lists, whatever it holds
///   X/YAxisMin/Max  ValueNumeric<double>    ends of the axes
///
/// A value that serves two axis ends acts on the first of these only: X min, X max, Y min, Y max.
/// The log then has a warning, once, in the category orvane.views.
///
/// Each notification becomes one data set, see GLIQDiagram::AddData. Where the Q list is shorter
/// than the I list, Q is 0; Q samples beyond the I list are ignored.
///
/// A setter answers whether a value of the right type is bound now. On false the role is unbound,
/// even if it was bound before. Setting the trigger or an axis limit applies the value's content at
/// once. A value that is removed from the tree, or destroyed, unbinds itself. To bind a value that
/// does not exist yet, see values::Binding.
///
/// When the user zooms one axis, the other follows, so that I and Q keep their scale to one
/// another. With Shift only the axis under the pointer zooms.
///
/// While the user pauses the view, triggers are ignored and their data are lost; limits still
/// apply. GUI thread only.
class ORVANE_API VCGLIQDiagram : public GLLayout, public IObserver
// clang-format on
{
    Q_OBJECT
public:
    explicit VCGLIQDiagram(QWidget* parent = nullptr);
    ~VCGLIQDiagram() override;

    ///@{
    /// Bind a role to a value, see the table above.
    bool SetData1_ValuePath(const QString& path);
    bool SetData2_ValuePath(const QString& path);
    bool SetHasChangedTrigger_ValuePath(const QString& path);
    bool SetXAxisMin_ValuePath(const QString& path);
    bool SetXAxisMax_ValuePath(const QString& path);
    bool SetYAxisMin_ValuePath(const QString& path);
    bool SetYAxisMax_ValuePath(const QString& path);
    ///@}

    /// Takes the changes of the bound values.
    void Update(Observable* source, TChangeCode code) override;

    /// Adds one data set directly, also while paused, and repaints.
    /// @param data  I, Q, I, Q..., swapped as by GLIQDiagram::AddData.
    void AddData(std::vector<float>& data);
    ///@{
    /// The same from contiguous memory, which is only read.
    /// @param data   may be null when count is 0.
    /// @param count  number of values, twice the number of points; an odd one is ignored.
    void AddData(const float* data, std::size_t count);
    void AddData(const double* data, std::size_t count);
    ///@}
    /// The samples that are kept, I, Q, I, Q..., in the order in which they came: a copy.
    std::vector<float> GetSamples() const;
    /// Forgets all data sets and the read-outs of the ruler; axes and settings stay. Repaints.
    void Clear();
    /// See GLIQDiagram::AutoScale.
    void AutoScale();
    ///@{
    /// Set how long points stay, see GLIQDiagram::SetAging and GLIQDiagram::SetAgesByData.
    void SetAging(double seconds);
    void SetAgesByData(bool byData);
    ///@}
    /// Paints a picture like RenderPicture, of any shape, in which a unit of I and a unit of Q keep
    /// the ratio of their lengths that they have in the view. One axis shows a wider range for it.
    void RenderInProportion(QPainter& painter, const QSize& size);

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
    GLIQDiagram* GetDiagram() const { return Diagram(); }
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
    friend struct ViewFrame<VCGLIQDiagram>;
    friend struct TestAccess;
    GLIQDiagram* Diagram() const { return m_diagram.get(); }
    GLBaseWidget& DiagramWidget() const;
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
    std::vector<float> m_pairs; // memory for the lists, joined
};
