// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/FileMenu.h"

#include "workbench/window/Icons.h"
#include "workbench/window/MenuEntries.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMainWindow>

namespace {

// Usual endings.
constexpr const char* recordingPatterns =
    " (*.wav *.w64 *.rf64 *.flac *.aif *.aiff *.aifc *.au *.snd *.caf *.ogg *.oga *.opus *.mp3"
    " *.mat *.voc *.wv *.sd2 *.svx *.nist *.sph *.xi *.htk *.avr *.paf *.pvf"
    " *.sigmf *.sigmf-meta *.sigmf-data *.cu8 *.cs8 *.cs16 *.cf32 *.fc32 *.iq *.s16 *.f32 *.csv "
    "*.tsv *.txt)";

} // namespace

FileMenu::FileMenu(QMainWindow& window)
    : QMenu(tr("&File"), &window)
    , m_open(menus::add(window, *this, tr("&Open recording..."), QKeySequence::Open))
{
    m_open->setIcon(signIcon(Sign::Open));
    connect(m_open, &QAction::triggered, this, &FileMenu::chooseFile);
    QAction* builtIn = menus::add(window, *this, tr("&Built-in signal"), Qt::CTRL + Qt::Key_B);
    connect(builtIn, &QAction::triggered, this, &FileMenu::builtInChosen);
    QMenu* demos = addMenu(tr("&Modulated signal"));
    const QStringList names = ModulationSettings::names();
    for (int i = 0; i < names.size(); ++i) {
        connect(demos->addAction(names[i]), &QAction::triggered, this,
                [this, i] { emit demoChosen(static_cast<ModulationSettings::Scheme>(i)); });
    }
    QAction* information = menus::add(window, *this, tr("&Information..."), Qt::CTRL + Qt::Key_I);
    connect(information, &QAction::triggered, this, &FileMenu::informationWanted);
    addSeparator();
    QAction* quit = menus::add(window, *this, tr("&Quit"), Qt::CTRL + Qt::Key_Q);
    connect(quit, &QAction::triggered, &window, &QWidget::close);
}

void FileMenu::remember(const QString& fileName) { m_folder = QFileInfo(fileName).absolutePath(); }

void FileMenu::chooseFile()
{
    const QString filters = tr("Recordings") + QLatin1String(recordingPatterns) +
                            QStringLiteral(";;") + tr("All files") + QStringLiteral(" (*)");
    const QString file =
        QFileDialog::getOpenFileName(parentWidget(), tr("Open recording"), m_folder, filters);
    if (!file.isEmpty())
        emit fileChosen(file);
}
