#pragma once

#include <QWidget>

class DownloadEngine;
class QScrollArea;
class QUrl;

// A screen whose colours are fixed when its parts are made, in a scroll area that fills it.
// When the appearance turns light or dark, the parts are made again.
class ThemedScreen : public QWidget
{
public:
    explicit ThemedScreen(QWidget* parent = nullptr);

protected:
    // Makes the screen's parts: beginContent(), the parts, then finishContent().
    virtual void buildContent() = 0;
    // Drops the old parts and returns an empty page for new ones.
    QWidget* beginContent();
    // Puts the page on screen; call it once the parts show the current state.
    void finishContent(QWidget* content);

    void changeEvent(QEvent* event) override;

    // The folder's file-system path; a saved plain path (a URL without scheme) counts too.
    static QString folderPath(const QUrl& folder);
    // Asks for the download folder and saves a new choice at once.
    void chooseTargetFolder(DownloadEngine& engine);

private:
    QScrollArea* m_scroll = nullptr;
    bool m_builtDark = false;
};
