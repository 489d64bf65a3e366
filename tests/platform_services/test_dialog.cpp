// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/gui/ColorSet.h"
#include "platform/gui/PropertyPagesFrame.h"
#include "platform/values/Persistant.h"

#include <QColorDialog>
#include <QComboBox>
#include <QFile>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace {

/// The button whose accessible name or text starts with a text.
QAbstractButton* button(const QDialog& dialog, const QString& start)
{
    for (auto* candidate : dialog.findChildren<QAbstractButton*>())
        if ((candidate->accessibleName() + candidate->text()).startsWith(start))
            return candidate;
    ADD_FAILURE() << "no button " << start.toStdString();
    return nullptr;
}

using Scheme = ColorSet::Scheme;

QColor defaultOf(int number)
{
    return ColorSet::DefaultColor(Scheme::Dark, IColorBase::ECOLOR(number));
}

struct ColorDialog : testing::Test
{
    ColorDialog()
    {
        QFile::remove(values::Persistant::StoreFile());
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        set.Load();
        frame.addProperty(&set);
        frame.show();
    }
    ~ColorDialog() override
    {
        QFile::remove(values::Persistant::StoreFile());
        set.Load();
    }
    void Choose(const QString& name, const QColor& color)
    {
        QTest::keyClick(button(frame, name), Qt::Key_Space);
        auto* dialog = frame.findChild<QColorDialog*>();
        dialog->setCurrentColor(color);
        dialog->accept();
        delete dialog;
    }
    void Apply() { button(frame, "&Apply")->click(); }

    ColorSet& set = ColorSet::Instance();
    const QColor orange{255, 136, 0};
    const QString trace = QStringLiteral("Time diagram, Traces");
    const QString points = QStringLiteral("IQ diagram, Points");
    PropertyPagesFrame frame;
};

TEST_F(ColorDialog, IsAppliedOnceByOkAndApplyAndNeverByCancel)
{
    frame.addProperty(nullptr);
    auto* tabs = frame.findChild<QTabWidget*>();
    EXPECT_EQ(tabs->count(), 1);
    int applied = 0;
    QObject::connect(&frame, &PropertyPagesFrame::signalApply, &frame, [&] { ++applied; });
    const std::tuple<std::function<void()>, int, int> rows[] = {
        {[&] { QTest::keyClick(tabs, Qt::Key_Return); }, QDialog::Accepted, 1},
        {[&] { QTest::keyClick(tabs, Qt::Key_Escape); }, QDialog::Rejected, 0},
        {[&] { button(frame, "Cancel")->click(); }, QDialog::Rejected, 0}};
    for (const auto& [close, result, count] : rows) {
        QTimer::singleShot(0, &frame, close);
        EXPECT_EQ(frame.exec(), result);
        EXPECT_EQ(std::exchange(applied, 0), count);
    }
    frame.show();
    Apply();
    EXPECT_TRUE(applied == 1 && frame.isVisible());
}

TEST_F(ColorDialog, AppliesEditsOfBothSchemesTogetherAndKeepsThem)
{
    struct Witness : QWidget
    {
        void paintEvent(QPaintEvent*) override { ++paints; }
        int paints = 0;
    } witness;
    witness.show();
    const auto painted = [&] {
        return QTest::qWaitFor([&] { return std::exchange(witness.paints, 0) > 0; });
    };
    const QColor& used = set[IColorBase::colTimeTrace];
    auto* scheme = frame.findChild<QComboBox*>();
    Choose(trace, orange);
    scheme->setCurrentIndex(int(Scheme::Light));
    Choose(points, Qt::red);
    scheme->setCurrentIndex(int(Scheme::Dark));
    EXPECT_EQ(used, defaultOf(133)) << "edits wait for the dialog";
    ASSERT_TRUE(painted());
    Apply();
    EXPECT_EQ(used, orange) << "references stay valid";
    EXPECT_TRUE(painted());
    scheme->setCurrentIndex(int(Scheme::Light));
    Apply();
    EXPECT_EQ(set[IColorBase::colIQPoint], QColor(Qt::red));
    EXPECT_TRUE(painted());

    set[IColorBase::colIQPoint] = Qt::blue; // by the host: the page has no say in it any more
    Apply();
    EXPECT_EQ(set[IColorBase::colIQPoint], QColor(Qt::blue));
    set.SetScheme(Scheme::Dark);
    set[IColorBase::colIQPoint] = Qt::red;
    set.Load();
    EXPECT_EQ(set.GetScheme(), Scheme::Light);
    EXPECT_EQ(set[IColorBase::colIQPoint], QColor(Qt::blue));
    EXPECT_EQ(set.Colors(Scheme::Dark).at(IColorBase::colTimeTrace), orange);
}

TEST_F(ColorDialog, ReturnsToTheDefaultsAndForgetsWhatIsCancelled)
{
    Choose(trace, orange);
    Choose(points, orange);
    button(frame, QStringLiteral("Reset ") + trace)->click();
    Apply();
    EXPECT_EQ(set[IColorBase::colTimeTrace], defaultOf(133));
    EXPECT_EQ(set[IColorBase::colIQPoint], orange);
    button(frame, QStringLiteral("&Reset All"))->click();
    Apply();
    EXPECT_EQ(set[IColorBase::colIQPoint], defaultOf(140));
    Choose(trace, orange);
    frame.reject();
    EXPECT_EQ(set[IColorBase::colTimeTrace], defaultOf(133));
    EXPECT_EQ(set[IColorBase::ECOLOR(-7)], QColor(128, 128, 128)) << "any number is valid";

    QSettings file(values::Persistant::StoreFile(), QSettings::IniFormat);
    file.setValue(QStringLiteral("ColorSet/Dark/133"), QStringLiteral("#12345"));
    file.sync();
    set.Load();
    EXPECT_EQ(set[IColorBase::colTimeTrace], defaultOf(133)) << "not a colour";
}

} // namespace
