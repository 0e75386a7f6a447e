// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/OutputOptionsForm.h"

#include "platform/DesktopServices.h"
#include "services/DownloadEngine.h"
#include "views/components/DesktopTexts.h"
#include "views/components/ElidedLabel.h"
#include "views/components/RoundedPanel.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

using namespace Theme;

OutputOptionsForm::OutputOptionsForm(Kind kind, DownloadEngine& engine, DesktopServices& desktop,
                                     QWidget* parent)
    : QWidget(parent)
    , m_kind(kind)
    , m_engine(engine)
    , m_desktop(desktop)
{
    const bool converter = kind == Kind::converter;
    QVBoxLayout* layout = column(this, converter ? 12 : 14);
    layout->addWidget(buildFolderRow());
    layout->addWidget(divider(this));
    layout->addWidget(buildPickers());
    layout->addWidget(divider(this));
    layout->addWidget(buildSwitches());
    if (m_chaptersBox)
        layout->addWidget(m_chaptersBox);

    for (auto signal :
         {&DownloadEngine::selectedFormatChanged, &DownloadEngine::selectedQualityChanged,
          &DownloadEngine::targetFolderChanged, &DownloadEngine::embedArtworkChanged,
          &DownloadEngine::embedMetadataChanged, &DownloadEngine::squareCoverChanged,
          &DownloadEngine::splitChaptersChanged}) {
        connect(&m_engine, signal, this, &OutputOptionsForm::update);
    }
    update();
}

QWidget* OutputOptionsForm::buildFolderRow()
{
    const bool converter = m_kind == Kind::converter;
    auto* block = new QWidget(this);
    QVBoxLayout* blockColumn = column(block, 6);
    if (converter) {
        blockColumn->addWidget(caption(tr("Destination Folder"), this));
    } else {
        blockColumn->addWidget(
            label(tr("Default Download Folder"), Theme::font(12, QFont::Medium)));
    }

    auto* row = new RoundedPanel(QPalette::Base, 0.6, 6, block);
    auto* rowLayout = new QHBoxLayout(row);
    if (converter) {
        rowLayout->setContentsMargins(7, 7, 7, 7);
        rowLayout->setSpacing(10);
    } else {
        rowLayout->setContentsMargins(8, 8, 8, 8);
    }
    rowLayout->addWidget(symbol(QStringLiteral("folder.fill"), accent(palette()), 16, row));
    m_folderPath = new ElidedLabel(row);
    m_folderPath->setFont(Theme::font(converter ? 11 : 12));
    rowLayout->addWidget(m_folderPath, 1);
    QPushButton* choose =
        converter ? smallButton(tr("Choose..."), QStringLiteral("folder.badge.gearshape"), row)
                  : smallButton(tr("Change..."), QString(), row);
    connect(choose, &QPushButton::clicked, this, &OutputOptionsForm::chooseFolder);
    rowLayout->addWidget(choose);
    if (converter) {
        auto* open = new QToolButton(row);
        open->setAutoRaise(true);
        open->setIcon(Symbols::icon(QStringLiteral("arrow.up.forward.square"), accent(palette())));
        open->setToolTip(DesktopTexts::openFolder());
        open->setAccessibleName(DesktopTexts::openFolder());
        connect(open, &QToolButton::clicked, this,
                [this] { m_desktop.openPath(folderPath(m_engine.targetFolder())); });
        rowLayout->addWidget(open);
    }
    blockColumn->addWidget(row);
    return block;
}

QWidget* OutputOptionsForm::buildPickers()
{
    const bool converter = m_kind == Kind::converter;
    auto* pickers = new QWidget(this);
    auto* row = new QHBoxLayout(pickers);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(converter ? 16 : 24);
    // A picker under its title: a caption on the converter, a label in settings.
    const auto titled = [&](const QString& converterTitle, const QString& settingsTitle,
                            QComboBox** picker) {
        auto* block = new QWidget(pickers);
        QVBoxLayout* blockColumn = column(block, converter ? 4 : 6);
        blockColumn->addWidget(converter ? caption(converterTitle, this)
                                         : label(settingsTitle, Theme::font(12, QFont::Medium)));
        *picker = new QComboBox(block);
        (*picker)->setAccessibleName(converter ? converterTitle : settingsTitle);
        blockColumn->addWidget(*picker);
        return block;
    };

    QWidget* formatBlock = titled(tr("Audio Format"), tr("Default Format"), &m_formatPicker);
    for (AudioFormat format : AudioFormat::allCases()) {
        if (converter) {
            m_formatPicker->addItem(
                Symbols::icon(format.iconName(), palette().color(QPalette::Text)),
                format.displayName(), format.rawValue());
        } else {
            m_formatPicker->addItem(format.displayName(), format.rawValue());
        }
    }
    m_bitrateColumn = titled(tr("Audio Quality"), tr("Default Bitrate"), &m_bitratePicker);
    for (AudioQuality quality : AudioQuality::allCases())
        m_bitratePicker->addItem(quality.displayName(), quality.rawValue());

    if (converter) {
        // Side by side in equal halves; a lossless format shows a note instead of a bitrate.
        m_losslessNote = label(tr("Lossless / Best Stream"), Theme::font(12), m_bitrateColumn);
        m_losslessNote->setContentsMargins(0, 3, 0, 3);
        setTextColor(m_losslessNote, secondaryText(palette()));
        m_bitrateColumn->layout()->addWidget(m_losslessNote);
        for (QWidget* block : {formatBlock, m_bitrateColumn}) {
            static_cast<QVBoxLayout*>(block->layout())->addStretch(1);
            row->addWidget(block, 1, Qt::AlignTop);
        }
    } else {
        row->addWidget(formatBlock);
        row->addWidget(m_bitrateColumn);
        row->addStretch(1);
    }

    connect(m_formatPicker, &QComboBox::activated, this, [this](int index) {
        if (auto format = AudioFormat::fromRawValue(m_formatPicker->itemData(index).toString())) {
            m_engine.setSelectedFormat(*format);
            changed();
        }
    });
    connect(m_bitratePicker, &QComboBox::activated, this, [this](int index) {
        if (auto quality =
                AudioQuality::fromRawValue(m_bitratePicker->itemData(index).toString())) {
            m_engine.setSelectedQuality(*quality);
            changed();
        }
    });
    return pickers;
}

QWidget* OutputOptionsForm::buildSwitches()
{
    const bool converter = m_kind == Kind::converter;
    auto* switches = new QWidget(this);
    if (converter) {
        auto* row = new QHBoxLayout(switches);
        row->setContentsMargins(0, 0, 0, 0);
        row->setSpacing(20);
        const QColor iconColor = palette().color(QPalette::WindowText);
        m_artworkBox = new QCheckBox(tr("Embed Album Artwork"), switches);
        m_artworkBox->setIcon(Symbols::icon(QStringLiteral("photo.artframe"), iconColor));
        m_metadataBox = new QCheckBox(tr("Embed ID3 Tags"), switches);
        m_metadataBox->setIcon(Symbols::icon(QStringLiteral("tag.fill"), iconColor));
        m_squareBox = new QCheckBox(tr("Square cover art"), switches);
        m_squareBox->setIcon(Symbols::icon(QStringLiteral("crop"), iconColor));
        m_squareBox->setFont(Theme::font(11));
        connect(m_squareBox, &QCheckBox::toggled, &m_engine, &DownloadEngine::setSquareCover);
        row->addWidget(m_artworkBox);
        row->addWidget(m_metadataBox);
        row->addWidget(m_squareBox);
        row->addStretch(1);
        // A plain choice: nothing is asked of the link before Rip.
        m_chaptersBox = new QCheckBox(tr("Split by chapters"), this);
        m_chaptersBox->setIcon(Symbols::icon(QStringLiteral("list.number"), iconColor));
        m_chaptersBox->setFont(Theme::font(11));
        connect(m_chaptersBox, &QCheckBox::toggled, &m_engine, &DownloadEngine::setSplitChapters);
    } else {
        QVBoxLayout* switchColumn = column(switches, 10);
        m_artworkBox =
            new QCheckBox(tr("Always embed YouTube thumbnail as album cover artwork"), switches);
        m_metadataBox = new QCheckBox(
            tr("Always embed ID3 audio tags (Title, Artist, Channel, Album)"), switches);
        switchColumn->addWidget(m_artworkBox);
        switchColumn->addWidget(m_metadataBox);
    }
    for (QCheckBox* box : {m_artworkBox, m_metadataBox})
        box->setFont(Theme::font(converter ? 11 : 12));
    connect(m_artworkBox, &QCheckBox::toggled, this, [this](bool on) {
        m_engine.setEmbedArtwork(on);
        changed();
    });
    connect(m_metadataBox, &QCheckBox::toggled, this, [this](bool on) {
        m_engine.setEmbedMetadata(on);
        changed();
    });
    return switches;
}

QString OutputOptionsForm::folderPath(const QUrl& folder)
{
    const QString path = folder.isLocalFile() ? folder.toLocalFile() : folder.path();
    return path.isEmpty() ? path : QDir::cleanPath(path);
}

void OutputOptionsForm::chooseFolder()
{
    const QString chosen = QFileDialog::getExistingDirectory(this, tr("Select Download Folder"),
                                                             folderPath(m_engine.targetFolder()));
    if (chosen.isEmpty())
        return;
    // A chosen folder is saved at once on both screens.
    m_engine.setTargetFolder(QUrl::fromLocalFile(chosen));
    m_engine.savePreferences();
}

void OutputOptionsForm::changed()
{
    // The converter keeps its choices for the next launch only when a rip starts.
    if (m_kind == Kind::settings)
        m_engine.savePreferences();
}

void OutputOptionsForm::update()
{
    m_folderPath->setText(folderPath(m_engine.targetFolder()));
    const AudioFormat format = m_engine.selectedFormat();
    {
        const QSignalBlocker blockFormat(m_formatPicker);
        const QSignalBlocker blockBitrate(m_bitratePicker);
        const QSignalBlocker blockArtwork(m_artworkBox);
        const QSignalBlocker blockMetadata(m_metadataBox);
        m_formatPicker->setCurrentIndex(m_formatPicker->findData(format.rawValue()));
        m_bitratePicker->setCurrentIndex(
            m_bitratePicker->findData(m_engine.selectedQuality().rawValue()));
        m_artworkBox->setChecked(m_engine.embedArtwork());
        m_metadataBox->setChecked(m_engine.embedMetadata());
        if (m_squareBox) {
            const QSignalBlocker blockSquare(m_squareBox);
            const QSignalBlocker blockChapters(m_chaptersBox);
            m_squareBox->setChecked(m_engine.squareCover());
            m_chaptersBox->setChecked(m_engine.splitChapters());
        }
    }
    if (m_losslessNote) {
        m_bitratePicker->setVisible(format.supportsBitrate());
        m_losslessNote->setVisible(!format.supportsBitrate());
    } else {
        m_bitrateColumn->setVisible(format.supportsBitrate());
    }
}
