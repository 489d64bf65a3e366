// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "WindowFixture.h"
#include "platform/startup/TranslationCenter.h"

#include "workbench/window/panels/ParameterDock.h"
#include "workbench/window/panels/ReceiverPanel.h"
#include "workbench/window/panels/SignalPanel.h"

#include <QAccessible>
#include <QCheckBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>

#include <map>

namespace {

struct Keys : Window
{
    /// Says which texts of a list are reached by the same key.
    static void expectDifferentKeys(const QStringList& texts)
    {
        std::map<QKeySequence, QString> known;
        for (const QString& text : texts) {
            const QKeySequence key = QKeySequence::mnemonic(text);
            if (key.isEmpty())
                continue;
            EXPECT_EQ(known[key], QString())
                << text.toStdString() << " / " << known[key].toStdString();
            known[key] = text;
        }
    }
    /// The texts that have no room.
    QStringList cutTexts()
    {
        QStringList texts;
        for (const QWidget* widget : window->findChildren<QWidget*>()) {
            const auto* label = qobject_cast<const QLabel*>(widget);
            const auto* box = qobject_cast<const QComboBox*>(widget);
            const QString text = box ? box->currentText() : widget->property("text").toString();
            if (!widget->isVisible() || text.isEmpty() || widget->inherits("QLineEdit"))
                continue;
            bool isCut = widget->width() < widget->minimumSizeHint().width();
            isCut = isCut && !(label && label->wordWrap());
            for (const QWidget* part = widget; (part = part->parentWidget());) {
                const auto* area = qobject_cast<const QScrollArea*>(part->parentWidget());
                const int right = widget->mapTo(part, widget->rect().topRight()).x();
                if (area && area->horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOff)
                    isCut = isCut || right >= part->width();
            }
            if (isCut)
                texts += text;
        }
        return texts;
    }
    void expectAllToBeReached()
    {
        std::map<QWidget*, int> order;
        window->timeView().setFocus();
        for (int i = 0; i < 200 && order.size() == std::size_t(i); ++i) {
            order[QApplication::focusWidget()] = i;
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        for (QWidget* widget : window->findChildren<QWidget*>()) {
            if (!widget->isVisible() || !widget->isEnabled() || widget->focusProxy() ||
                !(widget->focusPolicy() & Qt::TabFocus) || widget->window() != window.get())
                continue;
            const std::string type = widget->metaObject()->className();
            EXPECT_TRUE(order.count(widget)) << type << ' ' << widget->objectName().toStdString();
            const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(widget);
            ASSERT_TRUE(seen) << type;
            EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty())
                << type << ' ' << widget->toolTip().toStdString();
        }
        EXPECT_TRUE(order.count(window->findChild<QToolBar*>()->findChild<QComboBox*>()));
    }
    /// In any tab, with the built-in modulation or a recording of three channels.
    void expectNoTextToBeCut()
    {
        StageReport carrier{StageReport::Stage::Carrier, true, true, {}};
        carrier.readings.push_back({StageReport::Quantity::CarrierOffset, -123456.7});
        SymbolRateEstimate estimate;
        estimate.verdict = SymbolRateEstimate::Verdict::Unsure;
        for (const bool isRecording : {false, true}) {
            if (isRecording)
                dropSine(3, 16000);
            else
                window->player().openDemo(ModulationSettings());
            window->feed().transport().pause();
            auto& dock = *window->findChild<ParameterDock*>();
            for (int tab = 0; tab < 3; ++tab) {
                window->findChild<QTabWidget*>()->setCurrentIndex(tab);
                window->refresh();
                window->measure();
                dock.panel().signal().showEstimate(estimate);
                dock.receiver().showReports({carrier});
                EXPECT_TRUE(QTest::qWaitFor([this] { return cutTexts().isEmpty(); }, 2000))
                    << qPrintable(cutTexts().join(" | "));
            }
        }
    }
    void expectDifferentKeysInEveryMenuAndTab()
    {
        for (const QMenu* menu : window->menuBar()->findChildren<QMenu*>())
            expectDifferentKeys(textsOf(menu->actions()));
        for (const QMenu* menu : window->findChildren<QMenu*>())
            expectDifferentKeys(textsOf(menu->actions()));
        for (const QScrollArea* tab : window->findChildren<QScrollArea*>()) {
            QStringList inWindow = textsOf(window->menuBar()->actions());
            for (const QLabel* label : tab->findChildren<QLabel*>())
                if (label->buddy())
                    inWindow += label->text();
            for (const QAbstractButton* button : tab->findChildren<QAbstractButton*>())
                inWindow += button->text();
            expectDifferentKeys(inWindow);
        }
    }
    static QStringList textsOf(const QList<QAction*>& actions)
    {
        QStringList texts;
        for (const QAction* action : actions)
            texts += action->text();
        return texts;
    }
};

TEST_F(Keys, ReachEveryMenuEntryAndControlByOneOfItsOwn)
{
    TranslationCenter& translations = TranslationCenter::Instance();
    translations.AddFolder(ORVANE_CATALOGUES);
    translations.Register("OrvaneWorkbench");
    const QFont font = QApplication::font();
    const auto build = [&](double scale) {
        QFont scaled = font;
        scaled.setPointSizeF(scale * font.pointSizeF());
        QApplication::setFont(scaled);
        window.reset();
        window = std::make_unique<MainWindow>(scheme);
    };
    for (const char* language : {"en", "de"}) {
        translations.SetLanguage(language);
        for (const auto& [scale, size] :
             {std::pair(1.0, QSize(1280, 800)), {1.0, {800, 600}}, {1.5, {1280, 800}}}) {
            SCOPED_TRACE(testing::Message() << language << scale << ' ' << size.width());
            build(scale);
            window->resize(size);
            window->show();
            expectNoTextToBeCut();
            EXPECT_EQ(window->size(), size);
        }
        build(1.0);
        EXPECT_EQ(window->menuBar()->actions().first()->text(),
                  language == QString("de") ? "&Datei" : "&File");
        expectDifferentKeysInEveryMenuAndTab();
    }
    translations.SetLanguage("en");
    translations.Unregister("OrvaneWorkbench");
}

TEST_F(Keys, ComeToEveryControlWhichSaysItsName)
{
    auto& tabs = *window->findChild<QTabWidget*>();
    dropSine(2, 16000); // one that a receiver can be used with
    for (int tab = 0; tab < tabs.count(); ++tab) {
        tabs.setCurrentIndex(tab);
        expectAllToBeReached();
    }
}

TEST_F(Keys, OfControlsAreNotTakenByShortcutsButTheSpaceBarIs)
{
    auto* slider = window->findChild<ParameterPanel*>()->findChild<QSlider*>();
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_End);
    EXPECT_EQ(slider->value(), slider->maximum());
    auto& levels = control<QComboBox>("&Levels");
    levels.setFocus();
    QTest::keyClick(&levels, Qt::Key_4);
    QTest::keyClick(&levels, Qt::Key_P);
    EXPECT_FALSE(window->feed().transport().isPlaying());
    EXPECT_EQ(window->player().builtIn().levelCount, 4);

    dropSine(2, 80000);
    auto& span = control<QDoubleSpinBox>("&Span");
    auto* tick = window->findChild<ParameterPanel*>()->findChild<QCheckBox*>();
    bool isPlaying = window->feed().transport().isPlaying();
    for (QWidget* widget :
         {window->focusWidget(), window->findChild<QWidget*>("ToolBar")->findChild<QWidget*>(),
          static_cast<QWidget*>(window->findChild<QSlider*>()), static_cast<QWidget*>(tick),
          static_cast<QWidget*>(&control<QComboBox>("Sche&me")), static_cast<QWidget*>(&span)}) {
        widget->setFocus();
        const bool wasTicked = tick->isChecked();
        QTest::keyClick(widget, Qt::Key_Space);
        EXPECT_NE(window->feed().transport().isPlaying(), std::exchange(isPlaying, !isPlaying));
        EXPECT_EQ(tick->isChecked(), wasTicked);
    }
    span.selectAll();
    QTest::keyClicks(&span, "4");
    QTest::keyClick(&span, Qt::Key_Space);
    EXPECT_EQ(window->feed().transport().isPlaying(), isPlaying);
    QTest::keyClick(&span, Qt::Key_Return);
    QTest::keyClick(&span, Qt::Key_Space);
    EXPECT_NE(window->feed().transport().isPlaying(), isPlaying);
}

} // namespace
