// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include <orvane/VCGLTimeDiagram.h>
#include <orvane/platform/values/Tree.h>
#include <orvane/platform/values/Values.h>

#include <QtWidgets>
#include <cmath>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    // The application keeps its signal in named values...
    values::Tree& tree = values::Tree::Instance();
    auto* samples = tree.Create<values::ValueList<double>>("Samples");
    auto* markers = tree.Create<values::ValueList<double>>("Markers");
    auto* changed = tree.Create<values::Value<bool>>("Changed");
    tree.Create<values::ValueNumeric<double>>("Rate")->SetValue(1000.0); // samples per second
    tree.Create<values::ValueNumeric<double>>("Oldest")->SetValue(-0.5); // seconds
    tree.Create<values::ValueNumeric<double>>("Newest")->SetValue(0.0);
    samples->GetList().resize(40);
    markers->GetList() = {40.0}; // the 40 samples from the first one on are one trace
    // ...and tells the view, a widget like any other, where they are.
    VCGLTimeDiagram view;
    view.SetData1_ValuePath("Samples");
    view.SetBaudrateData_ValuePath("Markers");
    view.SetBaudrate_ValuePath("Rate");
    view.SetXAxisMin_ValuePath("Oldest");
    view.SetXAxisMax_ValuePath("Newest");
    view.SetHasChangedTrigger_ValuePath("Changed");
    view.show();

    QTimer timer; // whenever there are new samples: write them, then set the trigger
    QObject::connect(&timer, &QTimer::timeout, &view, [=, n = 0u]() mutable {
        for (double& sample : samples->GetList())
            sample = 0.8 * std::sin(0.05 * n++);
        changed->SetValue(true);
    });
    timer.start(40);
    return application.exec();
}
