// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPalette>
#include <QWidget>

// A plain rounded background behind a group of controls: a palette colour at an opacity, read
// when painted, so it follows light and dark palettes as they change.
class RoundedPanel : public QWidget
{
    Q_OBJECT

public:
    RoundedPanel(QPalette::ColorRole role, qreal opacity, qreal cornerRadius = 0,
                 QWidget* parent = nullptr);

    // An outline drawn on the same shape; none while its alpha is zero.
    void setOutline(const QColor& color) { m_outline = color; }
    // The width the panel asks for when there is room; 0: what its layout asks for.
    void setIdealWidth(int width) { m_idealWidth = width; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPalette::ColorRole m_role;
    qreal m_opacity;
    qreal m_cornerRadius;
    QColor m_outline = Qt::transparent;
    int m_idealWidth = 0;
};
