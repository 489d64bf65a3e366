// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"
#include "foundations/GLBackground.h"
#include "platform/glbase/GLFrameWidget.h"
#include "platform/glwidgets/ScanBufferWidgetBase.h"
#include "platform/gui/IHasPropertyPage.h"
#include "platform/values/Persistant.h"

#include <QAction>
#include <QDateTime>
#include <QTimer>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

class AxisHandler;
class GLOrvanePropertyPage;
class GLPainter;
class XAxisWidget;
class YAxisHandler;
template<class Diagram>
struct DiagramFrame;

/// IQ (constellation) diagram: pairs of in-phase (I) and quadrature (Q) samples as points in the
/// plane, I along X and Q along Y, both in the samples' unit. Each point lights one device pixel.
///
/// Each data set stays until it is older than the aging time, 1 s unless the user sets another; at
/// most the newest 100 are kept. Ages are taken at a paint, against the end of the paint before:
/// what came after that paint is always drawn, so a plot that was hidden for long shows its old
/// points once more, and while no data come, two repaints that are more than the aging time apart
/// empty the plot.
///
/// Nothing is painted, not even the background, before an X axis is set.
///
/// The one persisted setting is the grid switch ("ShowGrid" of the group "GLIQDiagram"). GUI thread
/// only. Held by std::shared_ptr, in a GLLayout.
class ORVANE_API GLIQDiagram : public ScanBufferWidgetBase,
                               public values::PersistantOwner,
                               public IHasContextMenu,
                               public IHasPropertyPage
{
    Q_OBJECT
public:
    /// @param name    object name.
    /// @param layout  the layout that the diagram will be added to; may be null.
    GLIQDiagram(const std::string& name, GLLayout* layout);
    ~GLIQDiagram() override;

    /// Adds a data set, without requesting a repaint.
    /// @param data  I, Q, I, Q... in any order. Swapped, not copied: afterwards it holds the
    /// samples
    ///              of the data set that was recycled, or nothing. An empty one, and one with an
    ///              odd number of values, is ignored and left as it is.
    /// Pairs with a NaN or an infinity are not drawn; NaNs do not count for the auto-scale.
    void AddData(std::vector<float>& data);
    /// Likewise, of values in contiguous memory, which are copied.
    /// @param count  of values, twice that of points.
    void AddData(const float* data, std::size_t count);
    void AddData(const double* data, std::size_t count);
    /// Forgets all data sets, and requests a repaint. Ranges and settings stay, and so does an
    /// auto-scale period.
    void Clear();
    /// Sets how long points stay, in seconds, and repaints. Infinity keeps them until they are
    /// among the oldest; NaN and negative numbers are ignored.
    void SetAging(double seconds);
    /// Takes ages against the newest data set instead of the last paint, so that the plot stays as
    /// it is while no data come; false at first.
    void SetAgesByData(bool byData);
    /// The samples that are kept, I, Q, I, Q..., data sets and their samples in the order in which
    /// they came.
    std::vector<float> GetSamples() const;

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
    /// Starts an auto-scale period of 1 s: the next data set, whenever it comes, replaces both
    /// ranges by its own extent and 5 % of it on either side; those after it widen the ranges until
    /// the second is over. A call within the period changes nothing. Without an X axis only Y is
    /// scaled.
    void AutoScale();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    friend struct DiagramFrame<GLIQDiagram>;
    friend struct TestAccess;

    struct ValueRecord
    {
        std::vector<float> m_samples; ///< I, Q, I, Q...
        QDateTime m_time;             ///< When the data set came.
    };
    struct Plot;

    ValueRecord* AddRecord();
    void RemoveRecord();
    void ScaleTo(const std::vector<float>& samples);
    void ShowYRange();
    std::size_t CountYoungRecords() const;
    void DrawPoints(const Plot& plot, std::size_t recordCount, GLPainter& painter) const;

    std::vector<ValueRecord*> m_records; // newest first
    std::vector<ValueRecord*> m_freeRecords;
    std::vector<float> m_copy; // of data that may not be swapped
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
    QDateTime m_lastPaintTime; // end of the previous paint
    double m_aging = 1.0;      // seconds
    bool m_agesByData = false;
    GLOrvanePropertyPage* m_pPropertyPage = nullptr; // while the properties dialog runs
    QString m_caption;
    bool m_showGrid = true;
};
