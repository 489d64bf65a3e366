// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/MainWindow.h"

#include "platform/values/Settings.h"
#include "workbench/window/density/Densities.h"
#include "workbench/window/menus/FileMenu.h"
#include "workbench/window/panels/ParameterDock.h"
#include "workbench/window/panes/ViewPanes.h"

namespace {

const QString geometryKey = QStringLiteral("Window/Geometry");
const QString parametersShownKey = QStringLiteral("Window/ParametersShown");
const QString parametersWidthKey = QStringLiteral("Window/ParametersWidth");
const QString panesKey = QStringLiteral("Window/Panes");

} // namespace

void MainWindow::restoreParameters()
{
    m_player.restore();
    m_densities->restore();
}

void MainWindow::remember(const QString& fileName) { m_file->remember(fileName); }

void MainWindow::restoreRoom()
{
    const values::Settings settings;
    restoreGeometry(QByteArray::fromBase64(settings.value(geometryKey).toByteArray()));
    if (const int width = settings.value(parametersWidthKey).toInt(); width > 0)
        resizeDocks({m_parameters}, {width}, Qt::Horizontal);
    m_parameters->setVisible(settings.value(parametersShownKey, true).toBool());
    m_panes->setRoom(settings.value(panesKey).toList());
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    keep();
    QMainWindow::closeEvent(event);
}

void MainWindow::keep()
{
    values::Settings settings;
    settings.setValue(geometryKey, QString::fromLatin1(saveGeometry().toBase64()));
    settings.setValue(parametersShownKey, !m_parameters->isHidden());
    settings.setValue(parametersWidthKey, m_parameters->width());
    settings.setValue(panesKey, m_panes->room());
    m_player.keep();
}
