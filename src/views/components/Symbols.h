// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QRectF>
#include <QString>

class QPainter;

// Maps the platform symbol names used across the screens ("play.fill", "folder", ...) to
// glyphs of the Material Icons font, kept as SVG outlines (data/symbols, written from the font
// by tools/symbols) and drawn in any colour. An unknown name never gives a blank.
namespace Symbols {

// The Material Icons ligature for a symbol name (a fallback glyph for unknown names).
QString glyphName(const QString& symbolName);
// Whether the table knows the name.
bool contains(const QString& symbolName);
// Every glyph the table names, with the fallback: the outlines the program carries.
QStringList glyphNames();
// Draws the symbol centred in rect, sized to the rect's smaller side.
void paint(QPainter& painter, const QRectF& rect, const QString& symbolName, const QColor& color);
// Draws the symbol's glyph at a pixel size centred in rect, as the painted lists do; bold
// glyphs are drawn a little larger.
void paint(QPainter& painter, const QRectF& rect, const QString& symbolName, int pixelSize,
           const QColor& color, bool bold = false);
// A tinted pixmap of the symbol, pixelSize square in device-independent pixels.
QPixmap pixmap(const QString& symbolName, const QColor& color, int pixelSize = 16,
               qreal devicePixelRatio = 1.0);
// A tinted icon of the symbol, drawn at the size it is shown at.
QIcon icon(const QString& symbolName, const QColor& color);
// Every symbol name the table knows.
QStringList knownNames();

} // namespace Symbols
