#pragma once

#include <QString>

// Texts of the library and batch screens that more than one file shows.
namespace LibraryTexts {

inline const QString showInFolder = QStringLiteral("Show in Folder");
inline const QString openInDefaultPlayer = QStringLiteral("Open in Default Player");
inline const QString removeFromLibraryTip = QStringLiteral("Remove from library");

} // namespace LibraryTexts
