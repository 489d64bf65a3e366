// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panes/ViewBindings.h"

#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"
#include "workbench/feed/EyeFeed.h"
#include "workbench/feed/IqValues.h"
#include "workbench/feed/TimeValues.h"

namespace {

constexpr double longestAging = 10.0; // s, that can be set

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
    view.SetBufferSize(EyeFeed::capacity);
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
    view.SetAging(longestAging);
    view.SetAgesByData(true); // or a repaint would empty the view while the signal stands still
}

void viewBindings::release(VCGLEyeDiagram& view) { view.SetHasChangedTrigger_ValuePath(QString()); }

void viewBindings::release(VCGLIQDiagram& view) { view.SetHasChangedTrigger_ValuePath(QString()); }
