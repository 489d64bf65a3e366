// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"
#include "foundations/GLBackground.h"
#include "platform/glbase/GLFrameWidget.h"
#include "platform/glwidgets/ScanBufferWidgetBase.h"
#include "platform/gui/IHasPropertyPage.h"
#include "platform/values/Persistant.h"

#include <QAction>
#include <QTimer>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

class AxisHandler;
class GLOrvanePropertyPage;
class XAxisWidget;
class YAxisHandler;
struct Extent;
template<class Diagram>
struct DiagramFrame;

/// Time diagram: a stream of samples against time, as step lines.
///
/// Each data set is one trace. The newest trace ends at the right border, each older one where the
/// next newer begins, whatever time the X axis shows there; a marker line stands where each trace
/// begins. X is time in samples divided by the baud rate, usually from a negative start to 0; Y is
/// in the samples' unit. A trace is quantised to 256 levels over its own extent when it arrives.
///
/// At most 100 traces are kept, and after a paint only those that reach into the plot. Nothing is
/// painted, not even the background, before an X axis is set and while the baud rate is 0.
///
/// The one persisted setting is the grid switch ("ShowGrid" of the group "GLTimeDiagram"). GUI
/// thread only. Held by std::shared_ptr, in a GLLayout.
class ORVANE_API GLTimeDiagram : public ScanBufferWidgetBase,
                                 public values::PersistantOwner,
                                 public IHasContextMenu,
                                 public IHasPropertyPage
{
    Q_OBJECT
public:
    /// @param name  object name.
    explicit GLTimeDiagram(const std::string& name);
    ~GLTimeDiagram() override;

    /// Adds a data set as the newest trace, without requesting a repaint.
    /// @param data  samples in order, any number. Swapped, not copied: afterwards it holds the
    ///              samples of the trace that was recycled, or nothing. An empty one is ignored.
    /// The bounds of a trace cover the samples after its last NaN; NaN samples are drawn at the
    /// bottom.
    void AddData(std::vector<double>& data);
    /// Likewise, of samples in contiguous memory, which are copied.
    void AddData(const double* data, std::size_t count);
    void AddData(const float* data, std::size_t count);
    /// Forgets all traces, and requests a repaint. Ranges, baud rate and settings stay, and so does
    /// an auto-scale period.
    void Clear();
    /// The samples of the traces that are kept, the oldest trace first.
    std::vector<std::vector<double>> GetTraces() const;
    /// Divisor that turns samples into X axis units; not checked, no repaint. Initially 0.
    void SetBaudrate(float baudrate);

    /// Sets one end of the Y range, as it is.
    void SetYStart(double start);
    void SetYStop(double stop);
    /// The Y range that is shown, with the user's zoom and the settings page in effect.
    void GetYStartStop(double& start, double& stop);
    /// The Y axis, sharing ownership with the diagram.
    std::shared_ptr<AxisHandler> GetYAxisHandler();
    /// Unit in the read-outs of Y; empty for none.
    void SetYUnit(const QString& unit);
    /// The X axis, shared with the caller; an empty pointer detaches it.
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
    /// Applies the settings page; nothing while there is none. Without an X axis the X rows are
    /// left alone.
    void slotAcceptPropertyChanges() override;
    /// Runs the properties dialog until it is closed.
    void ShowProperties();
    /// Starts an auto-scale period of 1 s: the next data set, whenever it comes, replaces the Y
    /// range by its own extent and 5 % of it on either side; those after it widen the range until
    /// the second is over. A call within the period changes nothing.
    void AutoScale();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    friend struct DiagramFrame<GLTimeDiagram>;
    friend struct TestAccess;

    struct ValueRecord
    {
        float m_min; ///< Bounds of the band that the levels cover.
        float m_max;
        float m_first; ///< First and last sample.
        float m_last;
        std::vector<double> m_samples;
        GLFrameWidget::GLStepLine m_stepLine;
    };
    struct Plot;

    ValueRecord* AddRecord();
    void RemoveRecord();
    bool ScaleTo(Extent extent);
    void Quantise(ValueRecord& record, const std::vector<double>& data);
    void ShowYRange();
    std::size_t DrawTraces(const Plot& plot, GLFrameWidget& frame);

    std::vector<ValueRecord*> m_records; // newest first
    std::vector<ValueRecord*> m_freeRecords;
    std::vector<double> m_copy;            // of data that may not be swapped
    std::vector<unsigned char> m_stepData; // levels of the data set that is being added
    GLBackground m_background;
    QAction m_propertiesAction;
    QAction m_autoScaleAction;
    QTimer m_autoScaleTimer; // only whether it is running counts
    bool m_autoScalePending = false;
    QMenu* m_pContextMenu = nullptr;
    std::shared_ptr<XAxisWidget> m_xAxisWidget;
    std::shared_ptr<YAxisHandler> m_yAxisHandler;
    double m_yStart;
    double m_yStop;
    float m_baudrate = 0.0F;
    GLOrvanePropertyPage* m_pPropertyPage = nullptr; // while the properties dialog runs
    QString m_caption;
    bool m_showGrid = true;
};
