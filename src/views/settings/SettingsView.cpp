#include "views/settings/SettingsView.h"

#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/Services.h"
#include "views/components/ActivitySpinner.h"
#include "views/components/DesktopTexts.h"
#include "views/components/ElidedLabel.h"
#include "views/components/GlassCard.h"
#include "views/components/RoundedPanel.h"
#include "views/components/ScreenStyle.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"
#include "views/settings/ToolStatusRow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace ScreenStyle;

namespace {

QVBoxLayout* column(QWidget* owner, int spacing)
{
    auto* layout = new QVBoxLayout(owner);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

QLabel* sectionTitle(const QString& text, QWidget* owner)
{
    QLabel* title = label(text, ScreenStyle::font(13, QFont::Bold), owner);
    setTextColor(title, secondaryText(owner));
    return title;
}

QPushButton* smallButton(const QString& text, QWidget* parent)
{
    auto* button =
        new QPushButton(QString(text).replace(QLatin1Char('&'), QStringLiteral("&&")), parent);
    button->setAccessibleName(text);
    button->setFont(ScreenStyle::font(11));
    return button;
}

// A card that keeps to its own height; the screen's spare height goes below the last card.
GlassCard* card(QWidget* content, QWidget* parent)
{
    auto* result = new GlassCard(content, 14, 16, parent);
    result->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    return result;
}

} // namespace

SettingsView::SettingsView(const Services& services, QWidget* parent)
    : ThemedScreen(parent)
    , m_services(services)
{
    setAccessibleName(QStringLiteral("Settings"));
    setAutoFillBackground(true);
    buildContent();

    DownloadEngine& engine = m_services.engine;
    for (auto signal :
         {&DownloadEngine::selectedFormatChanged, &DownloadEngine::selectedQualityChanged,
          &DownloadEngine::targetFolderChanged, &DownloadEngine::embedArtworkChanged,
          &DownloadEngine::embedMetadataChanged}) {
        connect(&engine, signal, this, &SettingsView::updateDefaults);
    }
    DependencyManager& tools = m_services.dependencies;
    for (auto signal :
         {&DependencyManager::ytDlpPathChanged, &DependencyManager::ffmpegPathChanged,
          &DependencyManager::ytDlpVersionChanged, &DependencyManager::ffmpegVersionChanged,
          &DependencyManager::isReadyChanged, &DependencyManager::isInstallingChanged,
          &DependencyManager::installProgressChanged}) {
        connect(&tools, signal, this, &SettingsView::updateTools);
    }
}

SettingsView::~SettingsView() = default;

void SettingsView::buildContent()
{
    QWidget* content = beginContent();
    // Cards keep room around their panels for the shadow; margins and gaps are trimmed by it
    // so that the panels sit 24 from the sides and 20 apart.
    const QMargins shadow = GlassCard::shadowMargins();
    QVBoxLayout* layout = column(content, 20 - shadow.top() - shadow.bottom());
    layout->setContentsMargins(24 - shadow.left(), 24, 24 - shadow.right(), 24 - shadow.bottom());
    QLabel* title = label(QStringLiteral("Preferences"), ScreenStyle::font(22, QFont::Bold));
    title->setContentsMargins(shadow.left(), 0, shadow.right(), 0);
    layout->addWidget(title);
    layout->addSpacing(shadow.bottom());
    layout->addWidget(buildDefaultsCard());
    layout->addWidget(buildToolsCard());
    layout->addWidget(buildAboutCard());
    layout->addStretch(1);
    // Show the parts for the current state before the scroll area measures them: hiding a
    // part of a layout that has never been laid out does not reach the measures it caches.
    updateDefaults();
    updateTools();
    finishContent(content);
}

QWidget* SettingsView::buildDefaultsCard()
{
    DownloadEngine& engine = m_services.engine;
    auto* content = new QWidget;
    QVBoxLayout* layout = column(content, 14);
    layout->addWidget(sectionTitle(QStringLiteral("General Defaults"), this));

    // Folder.
    auto* folderBlock = new QWidget(content);
    QVBoxLayout* folderColumn = column(folderBlock, 6);
    folderColumn->addWidget(
        label(QStringLiteral("Default Download Folder"), ScreenStyle::font(12, QFont::Medium)));
    auto* folderRow = new RoundedPanel(RoundedPanel::Fill::controlBackground, 0.6, 6, folderBlock);
    auto* folderLayout = new QHBoxLayout(folderRow);
    folderLayout->setContentsMargins(8, 8, 8, 8);
    folderLayout->addWidget(symbol(QStringLiteral("folder.fill"), accent(this), 16, folderRow));
    m_folderPath = new ElidedLabel(folderRow);
    m_folderPath->setFont(ScreenStyle::font(12));
    folderLayout->addWidget(m_folderPath, 1);
    QPushButton* change = smallButton(QStringLiteral("Change..."), folderRow);
    connect(change, &QPushButton::clicked, this, &SettingsView::chooseFolder);
    folderLayout->addWidget(change);
    folderColumn->addWidget(folderRow);
    layout->addWidget(folderBlock);
    layout->addWidget(divider(content));

    // Format and bitrate.
    auto* pickers = new QWidget(content);
    auto* pickerRow = new QHBoxLayout(pickers);
    pickerRow->setContentsMargins(0, 0, 0, 0);
    pickerRow->setSpacing(24);
    auto* formatColumn = new QWidget(pickers);
    QVBoxLayout* formatLayout = column(formatColumn, 6);
    formatLayout->addWidget(
        label(QStringLiteral("Default Format"), ScreenStyle::font(12, QFont::Medium)));
    m_formatPicker = new QComboBox(formatColumn);
    m_formatPicker->setAccessibleName(QStringLiteral("Default Format"));
    for (AudioFormat format : AudioFormat::allCases())
        m_formatPicker->addItem(format.displayName(), format.rawValue());
    formatLayout->addWidget(m_formatPicker);
    pickerRow->addWidget(formatColumn);

    m_bitrateColumn = new QWidget(pickers);
    QVBoxLayout* bitrateLayout = column(m_bitrateColumn, 6);
    bitrateLayout->addWidget(
        label(QStringLiteral("Default Bitrate"), ScreenStyle::font(12, QFont::Medium)));
    m_bitratePicker = new QComboBox(m_bitrateColumn);
    m_bitratePicker->setAccessibleName(QStringLiteral("Default Bitrate"));
    for (AudioQuality quality : AudioQuality::allCases())
        m_bitratePicker->addItem(quality.displayName(), quality.rawValue());
    bitrateLayout->addWidget(m_bitratePicker);
    pickerRow->addWidget(m_bitrateColumn);
    pickerRow->addStretch(1);
    layout->addWidget(pickers);
    layout->addWidget(divider(content));

    // Every change here is saved at once.
    connect(m_formatPicker, &QComboBox::activated, this, [this, &engine](int index) {
        if (auto format = AudioFormat::fromRawValue(m_formatPicker->itemData(index).toString())) {
            engine.setSelectedFormat(*format);
            engine.savePreferences();
        }
    });
    connect(m_bitratePicker, &QComboBox::activated, this, [this, &engine](int index) {
        if (auto quality =
                AudioQuality::fromRawValue(m_bitratePicker->itemData(index).toString())) {
            engine.setSelectedQuality(*quality);
            engine.savePreferences();
        }
    });

    auto* switches = new QWidget(content);
    QVBoxLayout* switchColumn = column(switches, 10);
    m_artworkBox = new QCheckBox(
        QStringLiteral("Always embed YouTube thumbnail as album cover artwork"), switches);
    m_artworkBox->setFont(ScreenStyle::font(12));
    m_metadataBox = new QCheckBox(
        QStringLiteral("Always embed ID3 audio tags (Title, Artist, Channel, Album)"), switches);
    m_metadataBox->setFont(ScreenStyle::font(12));
    switchColumn->addWidget(m_artworkBox);
    switchColumn->addWidget(m_metadataBox);
    layout->addWidget(switches);
    connect(m_artworkBox, &QCheckBox::toggled, this, [&engine](bool on) {
        engine.setEmbedArtwork(on);
        engine.savePreferences();
    });
    connect(m_metadataBox, &QCheckBox::toggled, this, [&engine](bool on) {
        engine.setEmbedMetadata(on);
        engine.savePreferences();
    });

    return card(content, this);
}

QWidget* SettingsView::buildToolsCard()
{
    DependencyManager& tools = m_services.dependencies;
    auto* content = new QWidget;
    QVBoxLayout* layout = column(content, 14);

    auto* header = new QWidget(content);
    auto* headerRow = new QHBoxLayout(header);
    headerRow->setContentsMargins(0, 0, 0, 0);
    headerRow->addWidget(sectionTitle(QStringLiteral("Engine & CLI Tools"), this));
    headerRow->addStretch(1);
    QPushButton* check = smallButton(QStringLiteral("Check Dependencies"), header);
    connect(check, &QPushButton::clicked, &tools, &DependencyManager::checkDependencies);
    headerRow->addWidget(check);
    layout->addWidget(header);

    m_ytDlpRow = new ToolStatusRow(QStringLiteral("yt-dlp"), content);
    layout->addWidget(m_ytDlpRow);
    m_ffmpegRow = new ToolStatusRow(QStringLiteral("ffmpeg"), content);
    layout->addWidget(m_ffmpegRow);

    m_installRow = new QWidget(content);
    auto* installLayout = new QHBoxLayout(m_installRow);
    installLayout->setContentsMargins(0, 4, 0, 0);
    installLayout->setSpacing(8);
    m_installButton =
        smallButton(QStringLiteral("Download & Install Missing Tools Automatically"), m_installRow);
    m_installButton->setStyleSheet(prominentButtonSheet(orange(this)));
    connect(m_installButton, &QPushButton::clicked, &tools,
            &DependencyManager::installDependenciesAutomatically);
    installLayout->addWidget(m_installButton);
    m_installSpinner = new ActivitySpinner(14, m_installRow);
    installLayout->addWidget(m_installSpinner);
    m_installProgress = label(QString(), ScreenStyle::font(11), m_installRow);
    setTextColor(m_installProgress, orange(this));
    installLayout->addWidget(m_installProgress);
    installLayout->addStretch(1);
    layout->addWidget(m_installRow);

    return card(content, this);
}

QWidget* SettingsView::buildAboutCard()
{
    auto* content = new QWidget;
    auto* row = new QHBoxLayout(content);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(14);
    row->addWidget(symbol(QStringLiteral("waveform.circle.fill"), orange(this), 32, content));
    auto* texts = new QWidget(content);
    QVBoxLayout* textColumn = column(texts, 2);
    textColumn->addWidget(label(DesktopTexts::aboutTitle(), ScreenStyle::font(13, QFont::Bold)));
    QLabel* version = label(QStringLiteral("Version ") + QStringLiteral(VELDTONE_VERSION) +
                                QStringLiteral(" (Native Qt ") + QString::fromLatin1(qVersion()) +
                                QStringLiteral(" Widgets)"),
                            ScreenStyle::font(11), texts);
    setTextColor(version, secondaryText(this));
    textColumn->addWidget(version);
    row->addWidget(texts, 1);
    return card(content, this);
}

void SettingsView::chooseFolder()
{
    chooseTargetFolder(m_services.engine);
}

void SettingsView::updateDefaults()
{
    const DownloadEngine& engine = m_services.engine;
    m_folderPath->setText(folderPath(engine.targetFolder()));
    {
        const QSignalBlocker blockFormat(m_formatPicker);
        const QSignalBlocker blockBitrate(m_bitratePicker);
        const QSignalBlocker blockArtwork(m_artworkBox);
        const QSignalBlocker blockMetadata(m_metadataBox);
        m_formatPicker->setCurrentIndex(
            m_formatPicker->findData(engine.selectedFormat().rawValue()));
        m_bitratePicker->setCurrentIndex(
            m_bitratePicker->findData(engine.selectedQuality().rawValue()));
        m_artworkBox->setChecked(engine.embedArtwork());
        m_metadataBox->setChecked(engine.embedMetadata());
    }
    m_bitrateColumn->setVisible(engine.selectedFormat().supportsBitrate());
}

void SettingsView::updateTools()
{
    const DependencyManager& tools = m_services.dependencies;
    m_ytDlpRow->setTool(tools.ytDlpPath(), tools.ytDlpVersion());
    m_ffmpegRow->setTool(tools.ffmpegPath(), tools.ffmpegVersion());

    const bool installing = tools.isInstalling();
    m_installRow->setVisible(!tools.isReady());
    m_installButton->setVisible(!installing);
    m_installSpinner->setVisible(installing);
    m_installProgress->setVisible(installing);
    m_installProgress->setText(tools.installProgress());
}
