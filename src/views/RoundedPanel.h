#pragma once

#include <QPalette>
#include <QWidget>

// A plain rounded background behind a row of controls: a palette colour at an opacity.
class RoundedPanel : public QWidget
{
    Q_OBJECT

public:
    RoundedPanel(QPalette::ColorRole role, qreal opacity, qreal cornerRadius,
                 QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPalette::ColorRole m_role;
    qreal m_opacity;
    qreal m_cornerRadius;
};
