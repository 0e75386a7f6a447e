// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QGradientStops>
#include <QList>
#include <QMargins>

// The wide call-to-action button filled with a colour gradient, drawn by our own painting.
// Disabling it (QWidget::setEnabled) greys it out, drops its shadow and blocks clicks.
class GradientButton : public QAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(QString iconName READ iconName WRITE setIconName)

public:
    GradientButton(const QString& title, const QString& iconName, const QList<QColor>& gradient,
                   QWidget* parent = nullptr);

    QString iconName() const { return m_iconName; }
    void setIconName(const QString& name);
    QList<QColor> gradient() const { return m_gradient; }
    // Title: QAbstractButton::text()/setText(). Enabling: QWidget::setEnabled().

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // The fill's colour stops, evenly spaced; two greys when disabled.
    static QGradientStops fillStops(const QList<QColor>& gradient, bool enabled,
                                    const QPalette& palette);
    // The first gradient colour at 35 % when enabled, else fully transparent.
    static QColor shadowColor(const QList<QColor>& gradient, bool enabled);
    // Room kept around the pill for its shadow.
    static QMargins shadowMargins();
    // The size of the filled shape (without the shadow room) for a title.
    QSize shapeSize() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QString m_iconName;
    QList<QColor> m_gradient;
};
