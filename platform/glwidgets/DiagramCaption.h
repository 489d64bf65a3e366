// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class CaptionWidget;
class GLBaseWidget;
class QWidget;

/// Caption bar of a view: its title, a read-out at the right and, on request, a pause button that
/// Space toggles.
///
/// Sense of si_paused: the argument says whether data are to be taken. It is false when the user
/// pauses and true when the user resumes. A view that follows it therefore emits
/// StopButtonPressedForStart() on pausing and StopButtonPressedForStop() on resuming: each names
/// what the next press of the button is for.
class ORVANE_PLATFORM_API DiagramCaption : public QObject
{
    Q_OBJECT
public:
    /// @param parent        Qt parent of this object and of the bar's widget.
    /// @param pauseControl  whether there is a pause button.
    DiagramCaption(QWidget* parent, QString caption, bool pauseControl);
    /// Deletes the bar's widget if it is still there.
    ~DiagramCaption() override;

    QWidget* getCaptionWidget() const;
    /// GL widget that carries the bar in a layout; never null.
    std::shared_ptr<GLBaseWidget> getBaseWidget() const;
    void setTitle(const QString& title);
    /// A few words at the right while there is no read-out, see CaptionWidget::setNote.
    void setNote(const QString& text);
    bool isPaused() const;
    /// Presses the pause button for the user, unless it stands so already.
    void setPaused(bool paused);

signals:
    /// The last thing that happens on a toggle: the caption may be deleted by a receiver.
    void si_paused(bool takeData);
    /// The application has another language: the title wants translating anew.
    void si_languageChanged();

private:
    QPointer<CaptionWidget> m_pWidget;
    std::shared_ptr<GLBaseWidget> m_baseWidget;
};
