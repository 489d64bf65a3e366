// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// A form that uic has translated. Its views bind themselves to values that come later.
#include "ui_form.h"

#include <orvane/platform/values/Tree.h>
#include <orvane/platform/values/Values.h>

#include <QApplication>

#include <cmath>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    Ui::Form form;
    form.setupUi(&window);
    window.show();
    constexpr int count = 200;
    values::Tree& tree = values::Tree::Instance();
    auto* samples = tree.Create<values::ValueList<double>>("Form/Samples");
    auto* quadrature = tree.Create<values::ValueList<double>>("Form/Quadrature");
    auto* markers = tree.Create<values::ValueList<double>>("Form/Markers");
    for (int k = 0; k < count; ++k) {
        samples->GetList().push_back(0.9 * std::cos(6.3 * k / count));
        quadrature->GetList().push_back(0.9 * std::sin(6.3 * k / count));
        markers->GetList().push_back(k == 0 ? count : 0);
    }
    tree.Create<values::ValueNumeric<double>>("Form/Rate")->SetValue(count);
    tree.Create<values::Value<bool>>("Form/Trigger")->SetValue(true);
    return QApplication::exec();
}
