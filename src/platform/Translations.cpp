// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Translations.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QPointer>
#include <QTranslator>

namespace Translations {

namespace {
// Ours and Qt's, in use until the next install replaces them.
QPointer<QTranslator> s_own;
QPointer<QTranslator> s_qt;

void uninstall(QPointer<QTranslator>& translator)
{
    if (translator)
        QCoreApplication::removeTranslator(translator);
    delete translator.data();
}
} // namespace

QStringList shippedLanguages()
{
    // Each has a veldtone_<name>.qm compiled into the program's resources.
    return QDir(QStringLiteral(":/i18n"))
        .entryList({QStringLiteral("veldtone_*.qm")}, QDir::Files, QDir::Name)
        .replaceInStrings(QStringLiteral("veldtone_"), QString())
        .replaceInStrings(QStringLiteral(".qm"), QString());
}

QString languageFor(const QLocale& locale)
{
    const QStringList shipped = shippedLanguages();
    // In the order the user prefers them: "pt-BR" matches pt_BR, "de-AT" reads de.
    // English anywhere before a shipped language wins, since it is the texts' own.
    for (QString wanted : locale.uiLanguages()) {
        wanted.replace(u'-', u'_');
        if (wanted == u"C" || wanted.startsWith(u"en"))
            return {};
        if (shipped.contains(wanted))
            return wanted;
        // A regional variant we do not ship reads the language's other one: pt_PT gets pt_BR.
        const QString language = wanted.section(u'_', 0, 0);
        for (const QString& candidate : shipped) {
            if (candidate.section(u'_', 0, 0) == language)
                return candidate;
        }
    }
    return {};
}

QString install(const QLocale& locale)
{
    uninstall(s_own);
    uninstall(s_qt);
    const QString language = languageFor(locale);
    if (language.isEmpty())
        return {};
    auto* own = new QTranslator(QCoreApplication::instance());
    if (!own->load(QStringLiteral(":/i18n/veldtone_") + language) ||
        !QCoreApplication::installTranslator(own)) {
        delete own;
        return {};
    }
    s_own = own;
    // Qt's standard buttons and dialogs; a missing Qt translation leaves those in English.
    auto* qt = new QTranslator(QCoreApplication::instance());
    if (qt->load(QStringLiteral("qtbase_") + language,
                 QLibraryInfo::path(QLibraryInfo::TranslationsPath)) &&
        QCoreApplication::installTranslator(qt)) {
        s_qt = qt;
    } else {
        delete qt;
    }
    return language;
}

} // namespace Translations
