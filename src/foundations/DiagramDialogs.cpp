// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "foundations/DiagramDialogs.h"

#include "foundations/GLOrvanePropertyPage.h"
#include "platform/gui/ColorSet.h"
#include "platform/gui/PropertyPagesFrame.h"

#include <QAction>
#include <QEvent>
#include <QMenu>
#include <QPointer>

namespace diagramDialogs {

namespace {

// Options of the colour page, defined by the colour service.
constexpr std::int32_t colorPageOptions = 0x401;

/// Outlives the properties dialog that its action opens: Qt writes to a menu after the action has
/// run.
class Menu : public QMenu
{
public:
    Menu(QWidget* parent, QAction& properties, QAction& autoScale, Translator translator)
        : QMenu(parent)
        , m_properties(&properties)
        , m_autoScale(&autoScale)
        , m_tr(translator)
    {
        addAction(&properties);
        addAction(&autoScale);
        Translate();
        if (parent)
            connect(parent, &QObject::destroyed, this, &Menu::LeaveParent);
    }
    /// Called when the parent is destroyed, before it deletes its children.
    void LeaveParent()
    {
        if (m_dialogCount > 0)
            Discard();
    }
    void Discard()
    {
        if (m_dialogCount == 0) {
            delete this;
            return;
        }
        m_isDiscarded = true;
        setParent(nullptr, windowFlags());
    }
    void EnterDialog() { ++m_dialogCount; }
    void LeaveDialog()
    {
        if (--m_dialogCount == 0 && m_isDiscarded)
            deleteLater();
    }

protected:
    void changeEvent(QEvent* event) override
    {
        QMenu::changeEvent(event);
        if (event->type() == QEvent::LanguageChange)
            Translate();
    }

private:
    void Translate()
    {
        if (m_properties)
            m_properties->setText(m_tr("Properties...", nullptr, -1));
        if (m_autoScale)
            m_autoScale->setText(m_tr("Auto Scaling", nullptr, -1));
    }

    const QPointer<QAction> m_properties; // the diagram's, which may go first
    const QPointer<QAction> m_autoScale;
    const Translator m_tr;
    int m_dialogCount = 0;
    bool m_isDiscarded = false;
};

} // namespace

QMenu* createContextMenu(QWidget* parent, QAction& properties, QAction& autoScale, Translator tr)
{
    return new Menu(parent, properties, autoScale, tr);
}

void discard(QMenu* menu)
{
    if (menu)
        static_cast<Menu*>(menu)->Discard();
}

void runProperties(QWidget* parent, QObject* diagram, IHasPropertyPage* pages, QMenu* menu)
{
    auto* const runner = static_cast<Menu*>(menu);
    if (runner)
        runner->EnterDialog();
    ColorSet::Instance().m_pageOptions = colorPageOptions;
    // On the heap and guarded: the host may destroy the parent, and the dialog with it, meanwhile.
    const QPointer<PropertyPagesFrame> frame = new PropertyPagesFrame(parent);
    frame->addProperty(pages);
    frame->addProperty(&ColorSet::Instance());
    QObject::connect(frame, SIGNAL(signalApply()), diagram, SLOT(slotAcceptPropertyChanges()));
    frame->exec();
    delete frame;
    if (runner)
        runner->LeaveDialog();
}

void forgetDestroyed(GLOrvanePropertyPage*& page, QObject& owner)
{
    QObject::connect(page, &QObject::destroyed, &owner, [&page](const QObject* destroyed) {
        if (page == destroyed)
            page = nullptr;
    });
}

} // namespace diagramDialogs
