// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Recordings.h"
#include "eye/GLEyeDiagram.h"
#include "iq/GLIQDiagram.h"
#include "platform/glwidgets/AxisHandler.h"
#include "platform/glwidgets/CaptionWidget.h"
#include "platform/glwidgets/DiagramCaption.h"
#include "platform/gui/ColorSet.h"
#include "time/GLTimeDiagram.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"
#include "workbench/feed/IqValues.h"
#include "workbench/window/Appearance.h"
#include "workbench/window/MainWindow.h"
#include "workbench/window/NoticeBar.h"
#include "workbench/window/Progress.h"
#include "workbench/window/SchemeChoice.h"
#include "workbench/window/panels/ParameterPanel.h"
#include "workbench/window/panes/ViewPanes.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>

#include <gtest/gtest.h>

struct TestAccess
{
    static std::size_t traceCount(VCGLTimeDiagram& v) { return v.m_diagram->m_records.size(); }
    static std::size_t traceCount(VCGLEyeDiagram& v) { return v.m_pEyeDiagram->m_records.size(); }
    static void age(VCGLIQDiagram& v, double seconds) { v.m_diagram->m_aging = seconds; }
    static AxisHandler& levels(VCGLTimeDiagram& v) { return *v.m_diagram->GetYAxisHandler(); }
};

/// Types a name into the next dialog for files that comes up.
inline void nameFileOnceAsked(QObject* context, const QString& name)
{
    QTimer::singleShot(20, context, [context, name] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        auto* line = dialog ? dialog->findChild<QLineEdit*>() : nullptr;
        if (!line)
            return nameFileOnceAsked(context, name);
        line->setText(name); // a completer would take keys
        for (auto* button : dialog->findChildren<QPushButton*>())
            if (button->isDefault())
                QTest::mouseClick(button, Qt::LeftButton);
    });
}

struct Window : testing::Test, TestFolder
{
    Window()
    {
        values::Persistant::SetStoreFile(path("settings.ini"));
        window->resize(1000, 600);
        window->player().openBuiltIn(NrzSettings());
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        QApplication::setActiveWindow(window.get()); // no window manager does it
    }
    ~Window() override { values::Persistant::SetStoreFile(usualFile); }
    CaptionWidget& caption()
    {
        return *qobject_cast<CaptionWidget*>(
            window->timeView().GetToolbarCaption()->getCaptionWidget());
    }
    QAction& action(const char* text)
    {
        for (QAction* action : window->findChildren<QAction*>())
            if (action->text() == text)
                return *action;
        throw std::runtime_error(text);
    }
    /// The control of the panel that has a name.
    template<class Control>
    Control& control(const char* name)
    {
        for (QLabel* label : window->findChild<ParameterPanel*>()->findChildren<QLabel*>())
            if (auto* found =
                    label->text() == name ? qobject_cast<Control*>(label->buddy()) : nullptr)
                return *found;
        throw std::runtime_error(name);
    }
    bool waitForTraces(std::size_t traces)
    {
        return QTest::qWaitFor([&] {
            return TestAccess::traceCount(window->timeView()) >= traces &&
                   TestAccess::traceCount(window->eyeView()) >= traces;
        });
    }
    /// Whether the window takes them.
    bool drop(const QList<QUrl>& urls)
    {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QDropEvent event({50.0, 50.0}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &enter);
        return enter.isAccepted() && QCoreApplication::sendEvent(window.get(), &event) &&
               QTest::qWaitFor([this] { return !window->progress().isRunning(); });
    }
    /// Drops a recording of a sine.
    void dropSine(int channels, std::size_t values)
    {
        writeRecording(path("sine.wav"), 8000, channels, sine(values));
        EXPECT_TRUE(
            drop({QUrl("http://example.invalid/x.wav"), QUrl::fromLocalFile(path("sine.wav"))}));
    }
    const QString usualFile = values::Persistant::StoreFile();
    SchemeChoice scheme{std::nullopt};
    std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>(scheme);
};
