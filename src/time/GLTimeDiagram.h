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
/// Each data set is one trace. The newest trace ends at the right border, whatever time the X axis
/// shows there; each older trace ends where the next newer one begins. A marker line shows where a
/// trace begins. X is time in samples divided by the baud rate, usually from a negative start to 0;
/// Y is in the samples' unit. A trace is quantised to 256 levels over its own extent when it
/// arrives.
///
/// The diagram keeps the newest 100 traces; a paint drops those that lie left of the plot. It
/// paints nothing, not even the background, before an X axis is set and while the baud rate is 0.
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
    ///@{
    /// The same from contiguous memory, which is copied.
    void AddData(const double* data, std::size_t count);
    void AddData(const float* data, std::size_t count);
    ///@}
    /// Forgets all traces and repaints. Ranges, baud rate, settings and an auto-scale period stay.
    void Clear(); // NOLINT(bugprone-virtual-near-miss): clear() is about lines of text
    /// The samples of the traces that are kept, the oldest trace first: a copy.
    std::vector<std::vector<double>> GetTraces() const;
    /// Sets the number of samples per unit of the X axis, without a repaint. 0, the first value,
    /// paints nothing; any number is taken as it is.
    void SetBaudrate(float baudrate);

    ///@{
    /// Sets one end of the Y range. Any number is taken as it is.
    void SetYStart(double start);
    void SetYStop(double stop);
    ///@}
    /// The Y range that is shown, with the user's zoom and the settings page in effect.
    void GetYStartStop(double& start, double& stop);
    /// The Y axis, sharing ownership with the diagram.
    std::shared_ptr<AxisHandler> GetYAxisHandler();
    /// Unit in the read-outs of Y; empty for none.
    void SetYUnit(const QString& unit);
    /// Sets the X axis, shared with the caller; an empty pointer detaches it.
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
    /// Applies the settings page. Does nothing while there is none. Without an X axis it skips the
    /// X rows.
    void slotAcceptPropertyChanges() override;
    /// Runs the properties dialog until it is closed.
    void ShowProperties();
    /// Starts an auto-scale period of 1 s. The next data set, even a later one, sets the Y range to
    /// its own extent and 5 % of it on either side. Further data sets widen the range until the
    /// second is over. A call within the period does nothing.
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
    std::vector<double> m_copy;            // of data from contiguous memory
    std::vector<unsigned char> m_stepData; // levels of the data set that is being added
    GLBackground m_background;
    QAction m_propertiesAction;
    QAction m_autoScaleAction;
    QTimer m_autoScaleTimer; // runs during an auto-scale period
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
