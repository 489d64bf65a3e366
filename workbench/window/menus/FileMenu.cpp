// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/menus/FileMenu.h"

#include "platform/values/Settings.h"
#include "workbench/sources/PlainText.h"
#include "workbench/window/dialogs/StreamDialog.h"
#include "workbench/window/menus/Icons.h"
#include "workbench/window/menus/MenuEntries.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMainWindow>

namespace {

const QString recentKey = QStringLiteral("Files/Recent");
const QString folderKey = QStringLiteral("Files/Folder");
constexpr int maxRecentCount = 10;
constexpr int maxRecentWidth = 480; // pixels

// Usual endings.
constexpr const char* recordingPatterns =
    " (*.wav *.w64 *.rf64 *.flac *.aif *.aiff *.aifc *.au *.snd *.caf *.ogg *.oga *.opus *.mp3"
    " *.mat *.voc *.wv *.sd2 *.svx *.nist *.sph *.xi *.htk *.avr *.paf *.pvf"
    " *.sigmf *.sigmf-meta *.sigmf-data *.cu8 *.cs8 *.cs16 *.cf32 *.fc32 *.iq *.s16 *.f32 *.raw"
    " *.bin *.pcm *.csv "
    "*.tsv *.txt)";

} // namespace

FileMenu::FileMenu(QMainWindow& window)
    : QMenu(tr("&File"), &window)
    , m_open(menus::add(window, *this, tr("&Open recording..."), QKeySequence::Open))
{
    m_open->setIcon(signIcon(Sign::Open));
    connect(m_open, &QAction::triggered, this, &FileMenu::chooseFile);
    QAction* stream = menus::add(window, *this, tr("Open &stream..."), Qt::CTRL | Qt::Key_L);
    connect(stream, &QAction::triggered, this, &FileMenu::chooseStream);
    m_recent = addMenu(tr("Open &recent"));
    buildRecent();
    QAction* builtIn = menus::add(window, *this, tr("&Built-in signal"), Qt::CTRL | Qt::Key_B);
    connect(builtIn, &QAction::triggered, this, &FileMenu::builtInChosen);
    QMenu* demos = addMenu(tr("&Modulated signal"));
    const QStringList names = modulationKinds::names(modulationKinds::builtInCount);
    for (int i = 0; i < names.size(); ++i) {
        connect(demos->addAction(names[i]), &QAction::triggered, this,
                [this, i] { emit demoChosen(static_cast<ModulationKind>(i)); });
    }
    QAction* keeping = menus::add(window, *this, tr("&Export..."), Qt::CTRL | Qt::Key_E);
    connect(keeping, &QAction::triggered, this, &FileMenu::exportWanted);
    QAction* information = menus::add(window, *this, tr("&Information..."), Qt::CTRL | Qt::Key_I);
    connect(information, &QAction::triggered, this, &FileMenu::informationWanted);
    addSeparator();
    QAction* quit = menus::add(window, *this, tr("&Quit"), Qt::CTRL | Qt::Key_Q);
    connect(quit, &QAction::triggered, &window, &QWidget::close);
}

void FileMenu::buildRecent()
{
    const values::Settings settings;
    m_recentFiles = settings.value(recentKey).toStringList().mid(0, maxRecentCount);
    m_folder = settings.value(folderKey).toString();
    connect(m_recent, &QMenu::aboutToShow, this, &FileMenu::showRecent);
    m_recent->menuAction()->setEnabled(!m_recentFiles.isEmpty());
}

void FileMenu::showRecent()
{
    m_recent->clear();
    for (int i = 0; i < m_recentFiles.size(); ++i) {
        const QFileInfo file(m_recentFiles[i]);
        QString name =
            file.fileName() + QStringLiteral(" - ") + QDir::toNativeSeparators(file.path());
        name = plainText(name, maxLineLength);
        name = fontMetrics().elidedText(name, Qt::ElideMiddle, maxRecentWidth);
        name.replace(QLatin1Char('&'), QLatin1String("&&"));
        QAction* action = m_recent->addAction(QStringLiteral("&%1 %2").arg((i + 1) % 10).arg(name));
        connect(action, &QAction::triggered, this,
                [this, path = file.filePath()] { emit recentChosen(path); });
    }
    m_recent->addSeparator();
    connect(m_recent->addAction(tr("&Clear")), &QAction::triggered, this,
            [this] { setRecent({}); });
}

void FileMenu::setRecent(const QStringList& files)
{
    m_recentFiles = files.mid(0, maxRecentCount);
    m_recent->menuAction()->setEnabled(!m_recentFiles.isEmpty());
    values::Settings settings;
    settings.setValue(recentKey, m_recentFiles);
    settings.setValue(folderKey, m_folder);
}

void FileMenu::remember(const QString& fileName)
{
    const QFileInfo file(fileName);
    if (!file.isFile())
        return;
    m_folder = file.absolutePath();
    QStringList files = m_recentFiles;
    files.removeAll(file.absoluteFilePath());
    files.prepend(file.absoluteFilePath());
    setRecent(files);
}

void FileMenu::forget(const QString& fileName)
{
    QStringList files = m_recentFiles;
    if (files.removeAll(QFileInfo(fileName).absoluteFilePath()) > 0)
        setRecent(files);
}

void FileMenu::chooseFile()
{
    const QString filters = tr("Recordings") + QLatin1String(recordingPatterns) +
                            QStringLiteral(";;") + tr("All files") + QStringLiteral(" (*)");
    const QString file =
        QFileDialog::getOpenFileName(parentWidget(), tr("Open recording"), m_folder, filters);
    if (!file.isEmpty())
        emit fileChosen(file);
}

void FileMenu::chooseStream()
{
    auto* dialog = new StreamDialog(parentWidget());
    connect(dialog, &StreamDialog::streamChosen, this, &FileMenu::streamChosen);
    dialog->open();
}
