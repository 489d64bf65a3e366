// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Tree.h"
#include "platform/values/Values.h"

#include <QBuffer>
#include <QTest>
#include <QUiLoader>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

/// How many rows of pixels differ between two pictures of one size.
int changedRows(const QImage& before, const QImage& after)
{
    int count = 0;
    for (int y = 0; y < before.height(); ++y)
        count += before.copy(0, y, before.width(), 1) != after.copy(0, y, after.width(), 1);
    return count;
}

QByteArray property(const char* name, const char* text)
{
    return QByteArray("<property name=\"") + name + "\"><string>" + text + "</string></property>";
}

} // namespace

// Loaded as Designer and uic's users load it: the plug-in finds its libraries, each view takes the
// paths that the form gives it, before the values are there, and draws what is written to them.
TEST(Designer, FormsShowValuesThatComeLater)
{
    QUiLoader loader;
    loader.clearPluginPaths();
    loader.addPluginPath(QStringLiteral(ORVANE_DESIGNER_PLUGINS));
    for (const auto& [name, second] : {std::pair("TimeView", "markersPath"),
                                       {"EyeView", "markersPath"},
                                       {"IqView", "quadraturePath"}}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(loader.availableWidgets().contains(QLatin1String(name)));
        QByteArray form = QByteArray("<ui version=\"4.0\"><class>F</class><widget class=\"") +
                          name + "\" name=\"shown\">" + property("samplesPath", "Form/Samples") +
                          property(second, "Form/Second") +
                          property("triggerPath", "Form/Trigger") +
                          property("xMinimumPath", "Form/From") + "</widget></ui>";
        QBuffer file(&form);
        const std::unique_ptr<QWidget> view(loader.load(&file));
        ASSERT_TRUE(view) << loader.errorString().toStdString();
        EXPECT_EQ(view->property("samplesPath").toString(), QStringLiteral("Form/Samples"));
        if (view->property("ratePath").isValid()) // a rate of 0 paints nothing
            view->setProperty("ratePath", "Form/Rate");
        EXPECT_FALSE(view->property("bound").toBool());

        values::Tree& tree = values::Tree::Instance();
        auto* samples = tree.Create<values::ValueList<double>>("Form/Samples");
        auto* others = tree.Create<values::ValueList<double>>("Form/Second");
        auto* trigger = tree.Create<values::Value<bool>>("Form/Trigger");
        tree.Create<values::ValueNumeric<double>>("Form/From")->SetValue(-1.0);
        tree.Create<values::ValueNumeric<double>>("Form/Rate")->SetValue(200.0);
        EXPECT_TRUE(view->property("bound").toBool());
        view->resize(500, 400);
        view->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
        const QImage before = view->grab().toImage();
        for (int k = 0; k < 200; ++k) {
            samples->GetList().push_back(0.9 * std::cos(0.0315 * k));
            others->GetList().push_back(0.9 * std::sin(0.0315 * k));
        }
        if (QLatin1String(second) == QLatin1String("markersPath")) {
            others->GetList().assign(200, 0.0);
            others->GetList().front() = 200.0;
        }
        trigger->SetValue(true);
        // Once around, over nine tenths of the axis from -1 to 1; points leave rows out.
        EXPECT_GT(changedRows(before, view->grab().toImage()), before.height() / 3);
        for (const char* path : {"Samples", "Second", "Trigger", "From", "Rate"})
            tree.Remove(QStringLiteral("Form/") + QLatin1String(path));
        view->setProperty("samplesPath", QString());
        EXPECT_EQ(view->property("samplesPath").toString(), QString());
    }
}
