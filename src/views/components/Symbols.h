#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QString>

// Maps the platform symbol names used across the screens ("play.fill", "folder", ...) to
// glyphs of the Material Icons font, drawn in any colour. An unknown name never gives a blank.
namespace Symbols {

// The Material Icons ligature for a symbol name (a fallback glyph for unknown names).
QString glyphName(const QString& symbolName);
// The icon font at a pixel size; loads the font on first use.
QFont font(int pixelSize);
// A tinted icon of the symbol, rendered at the given pixel size.
QIcon icon(const QString& symbolName, const QColor& color, int pixelSize = 16);
// Every symbol name the table knows.
QStringList knownNames();

} // namespace Symbols
