// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QWidget>

// A capsule with a coloured dot and a short status text; the text is its accessible name.
class StatusPill : public QWidget
{
    Q_OBJECT

public:
    explicit StatusPill(QWidget* parent = nullptr);

    QString text() const { return m_text; }
    QColor dotColor() const { return m_dotColor; }
    void setStatus(const QString& text, const QColor& dotColor);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
    QColor m_dotColor;
};
