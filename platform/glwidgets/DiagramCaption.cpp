// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/DiagramCaption.h"

#include "platform/glbase/GLBaseWidget.h"
#include "platform/glwidgets/CaptionWidget.h"

namespace {

/// Place of the bar in a layout.
class CaptionHost : public GLBaseWidget
{
public:
    explicit CaptionHost(CaptionWidget* bar)
        : GLBaseWidget("Caption", nullptr)
        , m_bar(bar)
        , m_height(bar->height())
    {
        SetQWidget(bar);
    }
    int FixedHeight() const override { return m_height; }

protected:
    void PaintCarried(QPainter& painter, const QSize& size) override
    {
        if (m_bar)
            m_bar->PaintPicture(painter, size);
    }

private:
    QPointer<CaptionWidget> m_bar;
    int m_height;
};

} // namespace

DiagramCaption::DiagramCaption(QWidget* parent, QString caption, bool pauseControl)
    : QObject(parent)
    , m_pWidget(new CaptionWidget(parent, caption, pauseControl))
    , m_baseWidget(std::make_shared<CaptionHost>(m_pWidget.data()))
{
    connect(m_pWidget.data(), &CaptionWidget::pausedChanged, this,
            [this](bool paused) { emit si_paused(!paused); });
    connect(m_pWidget.data(), &CaptionWidget::languageChanged, this,
            &DiagramCaption::si_languageChanged);
}

DiagramCaption::~DiagramCaption() { delete m_pWidget; }

QWidget* DiagramCaption::getCaptionWidget() const { return m_pWidget; }

std::shared_ptr<GLBaseWidget> DiagramCaption::getBaseWidget() const { return m_baseWidget; }

void DiagramCaption::setTitle(const QString& title)
{
    if (m_pWidget)
        m_pWidget->setTitle(title);
}

void DiagramCaption::setNote(const QString& text)
{
    if (m_pWidget)
        m_pWidget->setNote(text);
}

bool DiagramCaption::isPaused() const { return m_pWidget && m_pWidget->isPaused(); }

void DiagramCaption::setPaused(bool paused)
{
    if (m_pWidget)
        m_pWidget->setPaused(paused);
}
