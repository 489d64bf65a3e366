// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"
#include "platform/glbase/IHasContextMenu.h"
#include "platform/gui/IHasPropertyPage.h"
#include "platform/values/Persistant.h"

#include <QAction>
#include <QPointF>
#include <QTimer>
#include <QWidget>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class GLOrvanePropertyPage;
class XAxisWidget;
struct Extent;

namespace OndoChartDisplay {
class CChartDisplay;
class CDataArrayD;
} // namespace OndoChartDisplay
namespace OndoChartDisplayComfort {
class CGraphicEngineSwitch;
}
template<class Diagram>
struct DiagramFrame;

/// Eye diagram: traces of a signal, each laid over the same interval from 0 to 1.
///
/// X is the position in the trace, from 0 to 1; Y is in the samples' unit. All traces have one
/// colour. The diagram keeps the newest 1000 samples, or the number of the settings page (100 to
/// 10000) or of SetBufferSize. Each trace counts as one sample more than it has.
///
/// A plain widget that draws a chart scene. Paints nothing before an X axis is set. Each paint sets
/// that axis to 0 to 1.
///
/// The one persisted setting is the grid switch ("ShowGrid" of the group "GLEyeDiagram"). GUI
/// thread only.
class ORVANE_API GLEyeDiagram : public QWidget,
                                public values::PersistantOwner,
                                public IHasContextMenu,
                                public IHasPropertyPage
{
    Q_OBJECT
public:
    explicit GLEyeDiagram(QWidget* parent);
    ~GLEyeDiagram() override;

    /// Adds a trace, without requesting a repaint.
    /// @param data  samples in order; read, not changed. Fewer than two are ignored. The curve is
    ///              broken at samples that are not finite, and NaN moves no bound.
    void AddData(std::vector<double>& data);
    ///@{
    /// The same from contiguous memory.
    void AddData(const double* data, std::size_t count);
    void AddData(const float* data, std::size_t count);
    ///@}
    /// Forgets all traces, and requests a repaint. The Y range and the settings stay, and so does
    /// an auto-scale period.
    void Clear();
    /// The traces that are kept, the oldest first: a copy. X of a point is the position in the
    /// trace, from 0 to 1, Y the sample. The oldest trace may have lost its first samples.
    std::vector<std::vector<QPointF>> GetTraces() const;
    /// Sets how many samples are kept, and repaints; older ones go. A number below 1 is ignored.
    /// The settings page offers 100 to 10000.
    void SetBufferSize(int samples);
    /// Paints the diagram into a picture of any size, as vectors where the painter draws vectors.
    /// Paints nothing without an X axis. The caller lays the X axis out for the same size.
    /// @param size  logical pixels.
    void PaintPicture(QPainter& painter, const QSize& size);
    /// Does nothing: an eye has no time axis. Exists so that all diagrams have the same operations.
    void SetBaudrate(float baudrate);

    ///@{
    /// Sets one end of the Y range, without a repaint. Any number is taken as it is.
    void SetYStart(double start);
    void SetYStop(double stop);
    ///@}
    /// The Y range that is shown.
    void GetYStartStop(double& start, double& stop);
    /// Sets the X axis below the diagram, shared with the caller; an empty pointer detaches it. The
    /// axis always shows 0 to 1 and has no zoom.
    void setXAxisWidget(const std::shared_ptr<XAxisWidget>& xAxisWidget);

    QMenu* getContextMenu(QContextMenuEvent* event, GLCommonWidget* widget, int index) override;
    void contextMenuClosed() override {}
    QWidget* GetPropertyPage(QWidget* parent, const char* name) override;
    void slotSetDefaultProperties() override {}
    void slotRejectPropertyChanges() override {}
    const QString& GetPropertyPagePath() override;
    void ApplyPersistantBeforeWrite() override {}
    void ApplyPersistantAfterRead() override;

public slots:
    /// Applies the settings page, except for its X rows; nothing while there is none.
    void slotAcceptPropertyChanges() override;
    /// Runs the properties dialog until it is closed.
    void ShowProperties();
    /// Starts an auto-scale period of 2 s. The next trace, even a later one, sets the Y range to
    /// its own extent and 5 % of it on either side. Further traces widen the range until the 2 s
    /// are over. A call within the period does nothing.
    void AutoScale();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    friend struct DiagramFrame<GLEyeDiagram>;
    friend struct TestAccess;

    struct ValueRecord
    {
        float m_min; ///< Bounds of the samples, with a margin.
        float m_max;
        std::uint64_t m_count; ///< Samples of the trace, which the chart scene holds.
    };

    ValueRecord* AddRecord();
    void RemoveRecord();
    void AppendPositions(OndoChartDisplay::CDataArrayD& array, std::size_t count, double divisor);
    void ScaleTo(Extent extent);
    void TrimHistory();
    void Keep(int samples);
    void ShowYRange();
    bool UpdateScene(const QSize& size);

    std::vector<ValueRecord*> m_records; // newest first
    std::vector<ValueRecord*> m_freeRecords;
    std::uint64_t m_recorded = 0; // samples of all records
    QAction m_propertiesAction;
    QAction m_autoScaleAction;
    QTimer m_autoScaleTimer; // runs during an auto-scale period
    bool m_autoScalePending = false;
    QMenu* m_pContextMenu = nullptr;
    std::shared_ptr<XAxisWidget> m_xAxisWidget;
    double m_yStart = -1.0;
    double m_yStop = 1.0;
    float m_xSpan = 1.0F;
    int m_bufferSize = 1000;
    GLOrvanePropertyPage* m_pPropertyPage = nullptr; // while the properties dialog runs
    QString m_caption;
    bool m_showGrid = true;
    OndoChartDisplay::CChartDisplay* m_pChartDisplay = nullptr;
    OndoChartDisplayComfort::CGraphicEngineSwitch* m_pEngineSwitch = nullptr;

    /// Positions of samples, which traces of the same length share.
    struct Positions
    {
        std::size_t first = 0; ///< Number of the sample.
        double divisor = 0.0;
        std::vector<double> values;
    } m_positions;
};
