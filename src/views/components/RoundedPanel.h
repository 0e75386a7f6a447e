#pragma once

#include <QWidget>

// A plain rounded background behind a row of controls: a system colour at an opacity.
class RoundedPanel : public QWidget
{
    Q_OBJECT

public:
    enum class Fill
    {
        controlBackground,
        textBackground
    };

    RoundedPanel(Fill fill, qreal opacity, qreal cornerRadius, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Fill m_fill;
    qreal m_opacity;
    qreal m_cornerRadius;
};
