// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QWidget>

class QToolButton;

/// Qt widget of a caption bar. Takes the focus of its view. An action that is added to it
/// (addAction) gets a button with its icon, left of the pause button, for as long as it is there.
class ORVANE_PLATFORM_API CaptionWidget : public QWidget
{
    Q_OBJECT
public:
    CaptionWidget(QWidget* parent, const QString& title, bool pauseControl);
    ~CaptionWidget() override;

    void setTitle(const QString& title);
    /// Text at the right of the bar; empty for none.
    void setReadout(const QString& text);
    /// A few words in the place of the read-out while there is none, paler than the title; empty
    /// for none. It may have shorter variants, each after U+009C: the first that fits is shown.
    /// Where none does, the last is cut. A tool tip tells the first where it is not shown.
    void setNote(const QString& text);
    const QString& readout() const { return m_readout; }
    const QString& note() const { return m_note; }
    bool isPaused() const;
    /// Pauses or resumes as a press of the pause button does. Does nothing without a button.
    void setPaused(bool paused);
    /// Paints the bar into a picture of a size in logical pixels, without focus frame and button.
    void PaintPicture(QPainter& painter, const QSize& size) const;

signals:
    /// Emitted last on a toggle: a receiver may delete the bar.
    void pausedChanged(bool paused);
    /// Escape was pressed. The bar takes the key only while it shows a read-out.
    void cleared();
    /// The language of the application changed: translate the title again.
    void languageChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void actionEvent(QActionEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void AddButton(QToolButton& button);
    void TellPause();
    void DescribePause();
    QString WholeNote() const;
    void TellWholeNote();
    QRect RoomForTitle(const QRect& place) const;
    void PaintBar(QPainter& painter, const QRect& place) const;

    QString m_title;
    QString m_readout;
    QString m_note;
    QToolButton* m_pPause; // null without pause control
    bool m_toldPaused = false;
};
