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
/// The argument of si_paused says whether to take data: false when the user pauses, true when the
/// user resumes. A view therefore emits StopButtonPressedForStart() on a pause and
/// StopButtonPressedForStop() on a resume: each name says what the next press will do.
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
    /// Pauses or resumes as a press of the pause button does. Does nothing without a button.
    void setPaused(bool paused);

signals:
    /// Emitted last on a toggle: a receiver may delete the caption.
    void si_paused(bool takeData);
    /// The language of the application changed: translate the title again.
    void si_languageChanged();

private:
    QPointer<CaptionWidget> m_pWidget;
    std::shared_ptr<GLBaseWidget> m_baseWidget;
};
