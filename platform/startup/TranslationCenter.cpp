// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/startup/TranslationCenter.h"

#include "platform/base/QtVersions.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <map>

// The platform's own catalogue; a static library's resources are there only if they are asked for.
// (The macro works outside of namespaces only.)
static void addResources() { Q_INIT_RESOURCE(OrvanePlatformTranslations); }

namespace {

/// "de_AT" gives "de_AT", "de".
QStringList withFallbacks(QString language)
{
    language.replace(QLatin1Char('-'), QLatin1Char('_'));
    QStringList languages{language};
    const auto underscore = [&](int from) {
        return int(language.lastIndexOf(QLatin1Char('_'), from));
    };
    for (int end = underscore(-1); end > 0; end = underscore(end - 1))
        languages += language.left(end);
    return languages;
}

/// The source texts are English: stop where the user prefers English.
bool isSourceLanguage(const QString& language)
{
    return language == QLatin1String("en") || language == QLatin1String("C");
}

} // namespace

struct TranslationCenter::Private
{
    Private();
    void Install(const QString& catalogue);
    void InstallAll();
    QString FindFile(const QString& catalogue) const;

    static void ApplicationStarts();
    static void ApplicationEnds();
    static Private* s_instance; // what Qt's hooks, which take no argument, work on

    QStringList registered;
    QString language;
    QStringList folders;
    std::map<QString, std::unique_ptr<QTranslator>> installed;
};

TranslationCenter::Private* TranslationCenter::Private::s_instance = nullptr;

TranslationCenter::Private::Private()
{
    s_instance = this;
    addResources();
    qAddPreRoutine(&Private::ApplicationStarts); // calls it at once when there is an application
}

void TranslationCenter::Private::ApplicationStarts()
{
    qAddPostRoutine(&Private::ApplicationEnds); // no translator is left for the process's exit
    s_instance->InstallAll();
}

void TranslationCenter::Private::ApplicationEnds() { s_instance->installed.clear(); }

void TranslationCenter::Private::InstallAll()
{
    installed.clear();
    Install(QStringLiteral("qtbase")); // the texts of Qt's own dialogs
    Install(QStringLiteral("OrvanePlatform"));
    for (const QString& catalogue : qAsConst(registered))
        Install(catalogue);
}

void TranslationCenter::Private::Install(const QString& catalogue)
{
    if (!QCoreApplication::instance() || installed.count(catalogue) != 0)
        return;
    const QString file = FindFile(catalogue);
    auto translator = std::make_unique<QTranslator>();
    if (file.isEmpty() || !translator->load(file))
        return;
    QCoreApplication::installTranslator(translator.get());
    installed[catalogue] = std::move(translator);
}

QString TranslationCenter::Private::FindFile(const QString& catalogue) const
{
    const QStringList preferred =
        language.isEmpty() ? QLocale::system().uiLanguages() : QStringList{language};
    const QStringList places =
        folders + QStringList{QStringLiteral(":/translations"),
                              QtVersions::libraryPath(QLibraryInfo::TranslationsPath)};
    for (const QString& wanted : preferred) {
        for (const QString& candidate : withFallbacks(wanted)) {
            for (const QString& place : places) {
                QString file =
                    QDir(place).filePath(QStringLiteral("%1_%2.qm").arg(catalogue, candidate));
                if (QFile::exists(file))
                    return file;
            }
            if (isSourceLanguage(candidate))
                return QString();
        }
    }
    return QString();
}

TranslationCenter& TranslationCenter::Instance()
{
    static auto* const center = new TranslationCenter; // outlives every library's exit code
    return *center;
}

TranslationCenter::TranslationCenter()
    : d(std::make_unique<Private>())
{}

TranslationCenter::~TranslationCenter() = default;

void TranslationCenter::Register(const QString& catalogue)
{
    d->registered += catalogue;
    d->Install(catalogue);
}

void TranslationCenter::Unregister(const QString& catalogue)
{
    if (d->registered.removeOne(catalogue) && !d->registered.contains(catalogue))
        d->installed.erase(catalogue);
}

QStringList TranslationCenter::Registered() const { return d->registered; }

void TranslationCenter::SetLanguage(const QString& language)
{
    d->language = language;
    d->InstallAll();
}

QString TranslationCenter::Language() const { return d->language; }

void TranslationCenter::AddFolder(const QString& folder)
{
    d->folders += folder;
    d->InstallAll();
}
