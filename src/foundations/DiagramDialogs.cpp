// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "foundations/DiagramDialogs.h"

#include "platform/gui/ColorSet.h"
#include "platform/gui/PropertyPagesFrame.h"

#include <QMenu>
#include <QPointer>

namespace diagramDialogs {

namespace {

// What the diagrams ask of the colour page; its meaning is the colour service's.
constexpr std::int32_t colorPageOptions = 0x401;

} // namespace

QMenu* createContextMenu(QWidget* parent, QAction& properties, QAction& autoScale)
{
    auto* menu = new QMenu(parent);
    menu->addAction(&properties);
    menu->addAction(&autoScale);
    return menu;
}

void runProperties(QWidget* parent, QObject* diagram, IHasPropertyPage* pages)
{
    ColorSet::Instance().m_pageOptions = colorPageOptions;
    // On the heap and guarded: the host may destroy the parent, and the dialog with it, meanwhile.
    const QPointer<PropertyPagesFrame> frame = new PropertyPagesFrame(parent);
    frame->addProperty(pages);
    frame->addProperty(&ColorSet::Instance());
    QObject::connect(frame, SIGNAL(signalApply()), diagram, SLOT(slotAcceptPropertyChanges()));
    frame->exec();
    delete frame;
}

} // namespace diagramDialogs
