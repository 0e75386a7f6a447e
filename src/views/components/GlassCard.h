#pragma once

#include <QWidget>

// A translucent rounded panel that wraps any content widget.
class GlassCard : public QWidget
{
    Q_OBJECT

public:
    explicit GlassCard(QWidget* content, qreal cornerRadius = 14, qreal padding = 16,
                       QWidget* parent = nullptr);

    QWidget* content() const { return m_content; }
    qreal cornerRadius() const { return m_cornerRadius; }
    qreal padding() const { return m_padding; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* m_content;
    qreal m_cornerRadius;
    qreal m_padding;
};
