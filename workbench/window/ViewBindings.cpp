// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/ViewBindings.h"

#include "eye/GLEyeDiagram.h"
#include "foundations/GLOrvanePropertyPage.h"
#include "iq/GLIQDiagram.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"
#include "workbench/feed/EyeFeed.h"
#include "workbench/feed/IqValues.h"
#include "workbench/feed/TimeValues.h"

namespace {

constexpr double longestAging = 10.0; // s, that can be set

/// The settings page of a diagram, which needs it for as long as it lives.
GLOrvanePropertyPage& pageOf(IHasPropertyPage& diagram, QWidget& owner)
{
    auto& page = dynamic_cast<GLOrvanePropertyPage&>(*diagram.GetPropertyPage(&owner, nullptr));
    page.hide();
    return page;
}

} // namespace

void viewBindings::bind(VCGLTimeDiagram& view)
{
    view.SetData1_ValuePath(TimeValues::samplesPath);
    view.SetBaudrateData_ValuePath(TimeValues::markersPath);
    view.SetBaudrate_ValuePath(TimeValues::baudratePath);
    view.SetXAxisMin_ValuePath(TimeValues::xMinPath);
    view.SetXAxisMax_ValuePath(TimeValues::xMaxPath);
    view.SetYAxisMin_ValuePath(TimeValues::yMinPath);
    view.SetYAxisMax_ValuePath(TimeValues::yMaxPath);
    view.SetHasChangedTrigger_ValuePath(TimeValues::triggerPath);
}

void viewBindings::bind(VCGLEyeDiagram& view)
{
    view.SetData1_ValuePath(EyeValues::samplesPath);
    view.SetBaudrateData_ValuePath(EyeValues::markersPath);
    view.SetYAxisMin_ValuePath(EyeValues::yMinPath);
    view.SetYAxisMax_ValuePath(EyeValues::yMaxPath);
    view.SetHasChangedTrigger_ValuePath(EyeValues::triggerPath);
    auto& diagram = *view.findChild<GLEyeDiagram*>();
    pageOf(diagram, diagram).SetBufferSize(0, EyeFeed::capacity, EyeFeed::capacity, true);
    diagram.slotAcceptPropertyChanges();
}

void viewBindings::bind(VCGLIQDiagram& view)
{
    view.SetData1_ValuePath(IqValues::iPath);
    view.SetData2_ValuePath(IqValues::qPath);
    view.SetXAxisMin_ValuePath(IqValues::xMinPath);
    view.SetXAxisMax_ValuePath(IqValues::xMaxPath);
    view.SetYAxisMin_ValuePath(IqValues::yMinPath);
    view.SetYAxisMax_ValuePath(IqValues::yMaxPath);
    view.SetHasChangedTrigger_ValuePath(IqValues::triggerPath);
    auto& diagram = dynamic_cast<GLIQDiagram&>(*view.Widgets().at(1));
    pageOf(diagram, view).SetAging(0.0, longestAging, longestAging, true);
    diagram.slotAcceptPropertyChanges();
    diagram.SetAgesByData(true); // or a repaint would empty it while it stands still
}
