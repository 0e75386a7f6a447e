// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class DesktopServices;
class DownloadEngine;
class ElidedLabel;
class QCheckBox;
class QComboBox;
class QLabel;
class QUrl;

// The output choices the converter and settings screens both edit: the destination folder,
// the format and bitrate pickers and the two embedding switches. It shows the engine's choices
// and writes each change back to the engine.
class OutputOptionsForm : public QWidget
{
    Q_OBJECT

public:
    enum class Kind
    {
        // The converter's compact form: captions, an open-folder button and a note in place of
        // the bitrate for lossless formats. Changes stay in memory until a rip starts.
        converter,
        // The settings screen's defaults, saved at every change.
        settings
    };

    // desktop opens the folder; only the converter's form offers that.
    OutputOptionsForm(Kind kind, DownloadEngine& engine, DesktopServices& desktop,
                      QWidget* parent = nullptr);

    // The folder's file-system path; a saved plain path (a URL without scheme) counts too.
    static QString folderPath(const QUrl& folder);

private:
    QWidget* buildFolderRow();
    QWidget* buildPickers();
    QWidget* buildSwitches();
    void chooseFolder();
    void changed();
    void update();

    Kind m_kind;
    DownloadEngine& m_engine;
    DesktopServices& m_desktop;
    ElidedLabel* m_folderPath = nullptr;
    QComboBox* m_formatPicker = nullptr;
    QWidget* m_bitrateColumn = nullptr;
    QComboBox* m_bitratePicker = nullptr;
    QLabel* m_losslessNote = nullptr;
    QCheckBox* m_artworkBox = nullptr;
    QCheckBox* m_metadataBox = nullptr;
    // The converter's only: the settings screen keeps it with the music settings.
    QCheckBox* m_squareBox = nullptr;
    QCheckBox* m_chaptersBox = nullptr;
};
