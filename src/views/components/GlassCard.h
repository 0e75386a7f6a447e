// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMargins>
#include <QWidget>

// A translucent rounded panel that wraps any content widget.
class GlassCard : public QWidget
{
    Q_OBJECT

public:
    // Takes ownership of content.
    explicit GlassCard(QWidget* content, qreal cornerRadius = 14, qreal padding = 16,
                       QWidget* parent = nullptr);

    QWidget* content() const { return m_content; }
    qreal cornerRadius() const { return m_cornerRadius; }
    qreal padding() const { return m_padding; }

    // Room kept around the panel for its shadow (blur 8, 4 downwards).
    static QMargins shadowMargins();
    // The panel's rectangle inside a card of the given size.
    static QRectF panelRect(const QSize& cardSize);
    // Draws the panel (shadow, material, window tint, outline) into rect.
    static void paintPanel(QPainter& painter, const QRectF& rect, qreal cornerRadius,
                           const QPalette& palette);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* m_content;
    qreal m_cornerRadius;
    qreal m_padding;
};
