// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/Renderer.h"

#include "platform/base/QtVersions.h"
#include "platform/glbase/GLSurface.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <algorithm>
#include <optional>

namespace {

Q_LOGGING_CATEGORY(rendererLog, "orvane.renderer", QtWarningMsg)

struct Choice
{
    Renderer::Kind kind;
    QString reason;
};

Renderer::Wish& wanted()
{
    static Renderer::Wish wish = Renderer::Wish::Automatic;
    return wish;
}

/// Whether this computer may have a graphics processor. Asking OpenGL loads all of a software
/// driver, which takes long and stays in memory.
bool mayHaveGraphics()
{
#ifdef Q_OS_LINUX
    const auto exists = [](const char* path) { return QFile::exists(QString::fromLatin1(path)); };
    return !QDir(QStringLiteral("/dev/dri"))
                .entryList({QStringLiteral("card*"), QStringLiteral("render*")}, QDir::System)
                .isEmpty() ||
           exists("/dev/nvidiactl") || exists("/dev/dxg");
#else
    return true;
#endif
}

Choice probe()
{
    if (!mayHaveGraphics())
        return {Renderer::Kind::Raster, QStringLiteral("there is no graphics device")};
    const Choice none{Renderer::Kind::Raster, QStringLiteral("there is no OpenGL context")};
    QOffscreenSurface surface;
    surface.setFormat(GLSurface::Format());
    surface.create();
    QOpenGLContext context;
    context.setFormat(GLSurface::Format());
    if (!surface.isValid() || !context.create() || !context.makeCurrent(&surface))
        return none;
    const auto* name = reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
    const QString renderer = QString::fromLatin1(name).simplified();
    const QSurfaceFormat format = context.format();
    const bool isUsable = !context.isOpenGLES() && format.majorVersion() >= 2 &&
                          format.profile() != QSurfaceFormat::CoreProfile;
    context.doneCurrent();
    if (!isUsable)
        return {Renderer::Kind::Raster,
                QStringLiteral("OpenGL lacks fixed functions (%1)").arg(renderer)};
    if (Renderer::IsSoftware(renderer))
        return {Renderer::Kind::Raster, QStringLiteral("OpenGL is software (%1)").arg(renderer)};
    return {Renderer::Kind::OpenGL, QStringLiteral("it is hardware (%1)").arg(renderer)};
}

/// Where Qt allows it, a view then shows a notice that OpenGL is missing.
Choice openGL(const QString& reason)
{
    if (QtVersions::bearsMissingOpenGL || QOpenGLContext().create())
        return {Renderer::Kind::OpenGL, reason};
    return {Renderer::Kind::Raster, QStringLiteral("there is no OpenGL, though %1").arg(reason)};
}

Choice choose()
{
    constexpr const char* variable = "ORVANE_RENDERER";
    const QString value = qEnvironmentVariable(variable);
    const QString setting = QStringLiteral("%1 is %2").arg(QLatin1String(variable), value);
    if (value == QLatin1String("gl"))
        return openGL(setting);
    if (value == QLatin1String("raster"))
        return {Renderer::Kind::Raster, setting};
    if (!value.isEmpty() && value != QLatin1String("auto"))
        qCWarning(rendererLog, "%s is not known; auto, gl and raster are", qPrintable(setting));
    const QString program = QStringLiteral("the application wants it");
    if (value != QLatin1String("auto") && wanted() == Renderer::Wish::OpenGL)
        return openGL(program);
    if (value != QLatin1String("auto") && wanted() == Renderer::Wish::Raster)
        return {Renderer::Kind::Raster, program};
    return probe();
}

std::optional<Choice>& chosen()
{
    static std::optional<Choice> choice;
    return choice;
}

QString described(const Choice& choice)
{
    const bool isOpenGL = choice.kind == Renderer::Kind::OpenGL;
    return QStringLiteral("%1, because %2")
        .arg(isOpenGL ? QStringLiteral("OpenGL") : QStringLiteral("raster"), choice.reason);
}

const Choice& current()
{
    if (!chosen()) {
        chosen() = choose();
        qCInfo(rendererLog, "%s", qPrintable(described(*chosen())));
    }
    return *chosen();
}

} // namespace

bool Renderer::Want(Wish wish)
{
    if (chosen())
        return false;
    wanted() = wish;
    return true;
}

Renderer::Kind Renderer::Current() { return current().kind; }

QString Renderer::Description() { return described(current()); }

bool Renderer::IsSoftware(const QString& name)
{
    // A virtual graphics card without acceleration also gives one of these names.
    static const QString parts[] = {QStringLiteral("llvmpipe"),
                                    QStringLiteral("softpipe"),
                                    QStringLiteral("swrast"),
                                    QStringLiteral("software"),
                                    QStringLiteral("swiftshader"),
                                    QStringLiteral("lavapipe"),
                                    QStringLiteral("basic render driver"),
                                    QStringLiteral("gdi generic"),
                                    QStringLiteral("no acceleration")};
    return std::any_of(std::begin(parts), std::end(parts), [&name](const QString& part) {
        return name.contains(part, Qt::CaseInsensitive);
    });
}
