// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/dialogs/Opening.h"

#include "workbench/sources/LiveAddress.h"
#include "workbench/sources/PlainText.h"
#include "workbench/sources/RawGuess.h"
#include "workbench/sources/RecordingOpener.h"
#include "workbench/window/Progress.h"
#include "workbench/window/dialogs/RawDialog.h"

#include <QFileInfo>

Opening::Opening(Progress& progress, QWidget* window)
    : QObject(window)
    , m_window(window)
    , m_progress(progress)
{}

void Opening::ask(const QString& fileName)
{
    if (!RawGuess::isRaw(fileName) || !Recording::checkFile(fileName)) {
        open(fileName, {});
        return;
    }
    auto* dialog = new RawDialog(fileName, m_window);
    connect(dialog, &RawDialog::chosen, this, &Opening::open);
    dialog->open();
}

void Opening::openAgain(const QString& fileName)
{
    if (const auto options = RawDialog::remembered(fileName); RawGuess::isRaw(fileName) && options)
        open(fileName, *options);
    else
        ask(fileName);
}

void Opening::open(const QString& address, const Recording::Options& options)
{
    const auto recording = std::make_shared<Result<Recording>>();
    const auto work = [recording, address, options](const Progress::GoOn& goOn) {
        Recording::Options all = options;
        all.goOn = goOn;
        *recording = RecordingOpener::open(address, all);
    };
    const QString name = LiveAddress::isLive(address) ? LiveAddress::title(address)
                                                      : plainText(QFileInfo(address).fileName());
    m_progress.run(tr("Opening %1").arg(name), work, [this, recording, address](bool isCancelled) {
        if (!isCancelled)
            emit done(address, *recording);
    });
}
