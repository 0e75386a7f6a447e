#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QList>

// The wide call-to-action button filled with a colour gradient, drawn by our own painting.
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
    void setGradient(const QList<QColor>& gradient);
    // Title: QAbstractButton::text()/setText(). Enabling: QWidget::setEnabled().

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QString m_iconName;
    QList<QColor> m_gradient;
};
