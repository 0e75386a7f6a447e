// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocale>
#include <QStringList>

// Puts the program's texts and Qt's own (its dialogs' buttons) in the user's language.
namespace Translations {

// The languages the program's texts come in besides English, as locale names.
QStringList shippedLanguages();

// The shipped language that best serves a locale's preferred languages, or an empty string for
// English.
QString languageFor(const QLocale& locale);

// Loads the translations for a locale into the application in place of any loaded before;
// English needs none. Call after the application object exists and before any window is
// built. Returns the language loaded.
QString install(const QLocale& locale = QLocale::system());

} // namespace Translations
