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
/// A data set goes when it is older than the aging time (1 s at first); at most the newest 100 are
/// kept. A paint measures ages against the end of the paint before. So data that came after that
/// paint are always drawn, a plot that was hidden for long shows its old points once more, and
/// while no data come, two repaints further apart than the aging time empty the plot. See
/// SetAgesByData for another way.
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
    /// @param data  I, Q, I, Q..., any number of pairs. Swapped, not copied: afterwards it holds
    ///              the samples of the data set that was recycled, or nothing. An empty vector and
    ///              one with an odd number of values are ignored and keep their content.
    /// Pairs with a NaN or an infinity are not drawn; NaNs do not count for the auto-scale.
    void AddData(std::vector<float>& data);
    ///@{
    /// The same from contiguous memory, which is copied.
    /// @param count  number of values, twice the number of points.
    void AddData(const float* data, std::size_t count);
    void AddData(const double* data, std::size_t count);
    ///@}
    /// Forgets all data sets and repaints. Ranges, settings and an auto-scale period stay.
    void Clear(); // NOLINT(bugprone-virtual-near-miss): clear() is about lines of text
    /// Sets the aging time in seconds, and repaints. Infinity keeps the newest 100 data sets. NaN
    /// and negative numbers are ignored.
    void SetAging(double seconds);
    /// Measures ages against the newest data set instead of the last paint, so that the plot does
    /// not change while no data come. Off at first.
    void SetAgesByData(bool byData);
    /// The samples that are kept, I, Q, I, Q..., in the order of their arrival: a copy.
    std::vector<float> GetSamples() const;

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
    /// Starts an auto-scale period of 1 s. The next data set, even a later one, sets both ranges to
    /// its own extent and 5 % of it on either side. Further data sets widen the ranges until the
    /// second is over. A call within the period does nothing. Without an X axis only Y is scaled.
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
    std::vector<float> m_copy; // of data from contiguous memory
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
    QDateTime m_lastPaintTime; // end of the previous paint
    double m_aging = 1.0;      // seconds
    bool m_agesByData = false;
    GLOrvanePropertyPage* m_pPropertyPage = nullptr; // while the properties dialog runs
    QString m_caption;
    bool m_showGrid = true;
};
