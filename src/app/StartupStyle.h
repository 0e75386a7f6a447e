#pragma once

#include <QProxyStyle>

// The application's style with the few standard icons a window asks for at construction, but
// rarely draws, made on first use: the menu bar's overflow arrow is read from image files, and
// the first image read loads every image-format plug-in.
class StartupStyle : public QProxyStyle
{
    Q_OBJECT

public:
    explicit StartupStyle(QStyle* base);

    QIcon standardIcon(StandardPixmap standardIcon, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override;
};
