// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/settings/SettingsView.h"

#include "platform/DesktopServices.h"
#include "services/AudioPlayerService.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/EnginePreferences.h"
#include "services/FollowService.h"
#include "services/PlaybackQueue.h"
#include "services/ToolUpdater.h"
#include "views/components/ActivitySpinner.h"
#include "views/components/DesktopTexts.h"
#include "views/components/ElidedLabel.h"
#include "views/components/GlassCard.h"
#include "views/components/OutputOptionsForm.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"
#include "views/settings/ToolStatusRow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace Theme;

namespace {

// The browser's own name, as the menu shows it.
QString browserName(const QString& browser)
{
    if (browser == u"edge")
        return QStringLiteral("Microsoft Edge");
    if (browser == u"chrome")
        return QStringLiteral("Google Chrome");
    return browser.left(1).toUpper() + browser.mid(1);
}

QLabel* sectionTitle(const QString& text, QWidget* owner)
{
    QLabel* title = label(text, Theme::font(13, QFont::Bold), owner);
    setTextColor(title, secondaryText(owner->palette()));
    return title;
}

// A labelled control on a line of its own; the label is its buddy and names it.
QWidget* labelledRow(const QString& text, QWidget* field, int top)
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, top, 0, 0);
    layout->setSpacing(8);
    QLabel* caption = label(text, Theme::font(12), row);
    layout->addWidget(caption);
    field->setAccessibleName(text);
    caption->setBuddy(field);
    layout->addWidget(field);
    layout->addStretch(1);
    return row;
}

// A card that keeps to its own height; the screen's spare height goes below the last card.
GlassCard* card(QWidget* content, QWidget* parent)
{
    auto* result = new GlassCard(content, 14, 16, parent);
    result->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    return result;
}

} // namespace

SettingsView::SettingsView(DownloadEngine& engine, DependencyManager& tools, ToolUpdater& updater,
                           AudioPlayerService& player, FollowService* following,
                           PlaybackQueue* queue, QWidget* parent)
    : ThemedScreen(Scrolling::scrolls, parent)
    , m_engine(engine)
    , m_tools(tools)
    , m_updater(updater)
    , m_player(player)
    , m_following(following)
    , m_queue(queue)
{
    setAccessibleName(tr("Settings"));
    setAutoFillBackground(true);
    buildContent();

    for (auto signal :
         {&DependencyManager::ytDlpPathChanged, &DependencyManager::ffmpegPathChanged,
          &DependencyManager::ytDlpVersionChanged, &DependencyManager::ffmpegVersionChanged,
          &DependencyManager::isReadyChanged}) {
        connect(&m_tools, signal, this, &SettingsView::updateTools);
    }
    connect(&m_tools, &DependencyManager::javaScriptRuntimeChanged, this,
            &SettingsView::updateTools);
    for (auto signal : {&ToolUpdater::latestVersionsChanged, &ToolUpdater::ytDlpOutOfDateChanged,
                        &ToolUpdater::isUpdatingChanged, &ToolUpdater::messageChanged,
                        &ToolUpdater::hasPreviousYtDlpChanged, &ToolUpdater::channelChanged})
        connect(&m_updater, signal, this, &SettingsView::updateTools);
}

SettingsView::~SettingsView() = default;

void SettingsView::buildContent()
{
    // What the user typed as the proxy, and whether it was refused, outlive a rebuild.
    const QString proxyText = m_proxyField ? m_proxyField->text() : m_engine.proxy();
    const bool proxyRefused = m_proxyError && !m_proxyError->isHidden();
    QWidget* content = beginContent();
    // Cards keep room around their panels for the shadow; margins and gaps are trimmed by it
    // so that the panels sit 24 from the sides and 20 apart.
    const QMargins shadow = GlassCard::shadowMargins();
    QVBoxLayout* layout = column(content, 20 - shadow.top() - shadow.bottom());
    layout->setContentsMargins(24 - shadow.left(), 24, 24 - shadow.right(), 24 - shadow.bottom());
    QLabel* title = label(tr("Preferences"), Theme::font(22, QFont::Bold));
    title->setContentsMargins(shadow.left(), 0, shadow.right(), 0);
    layout->addWidget(title);
    layout->addSpacing(shadow.bottom());
    layout->addWidget(buildDefaultsCard());
    layout->addWidget(buildMusicCard());
    layout->addWidget(buildPlaybackCard());
    layout->addWidget(buildToolsCard());
    layout->addWidget(buildAboutCard());
    layout->addStretch(1);
    m_proxyField->setText(proxyText);
    m_proxyError->setVisible(proxyRefused);
    // Show the parts for the current state before the scroll area measures them: hiding a
    // part of a layout that has never been laid out does not reach the measures it caches.
    updateTools();
    finishContent(content);
}

QWidget* SettingsView::buildDefaultsCard()
{
    auto* content = new QWidget;
    QVBoxLayout* layout = column(content, 14);
    layout->addWidget(sectionTitle(tr("General Defaults"), this));
    layout->addWidget(new OutputOptionsForm(OutputOptionsForm::Kind::settings, m_engine,
                                            DesktopServices::system(), content));

    // How many batch items rip side by side.
    auto* parallel = new QSpinBox;
    parallel->setRange(1, 4);
    parallel->setValue(m_engine.simultaneousRips());
    connect(parallel, &QSpinBox::valueChanged, this, [this](int count) {
        m_engine.setSimultaneousRips(count);
        m_engine.savePreferences();
    });
    layout->addWidget(labelledRow(tr("Simultaneous rips"), parallel, 0));
    layout->addWidget(engineSwitch(
        tr("Pause between rips in long batches"), &DownloadEngine::paceLongBatches,
        &DownloadEngine::setPaceLongBatches, &DownloadEngine::paceLongBatchesChanged, content));
    if (m_following) {
        auto* interval = new QComboBox;
        interval->addItem(tr("Every hour"), 1);
        interval->addItem(tr("Every 6 hours"), 6);
        interval->addItem(tr("Every day"), 24);
        interval->addItem(tr("Only when asked"), 0);
        interval->setCurrentIndex(interval->findData(m_following->intervalHours()));
        connect(interval, &QComboBox::activated, this, [this, interval] {
            m_following->setIntervalHours(interval->currentData().toInt());
        });
        layout->addWidget(labelledRow(tr("Check followed links"), interval, 0));
    }
    return card(content, this);
}

QCheckBox* SettingsView::engineSwitch(const QString& text, bool (DownloadEngine::*get)() const,
                                      void (DownloadEngine::*set)(bool),
                                      void (DownloadEngine::*changed)(), QWidget* parent)
{
    auto* box = new QCheckBox(text, parent);
    box->setFont(Theme::font(12));
    box->setChecked((m_engine.*get)());
    connect(box, &QCheckBox::toggled, this, [this, set](bool on) {
        (m_engine.*set)(on);
        m_engine.savePreferences();
    });
    connect(&m_engine, changed, box, [this, box, get] {
        const QSignalBlocker block(box);
        box->setChecked((m_engine.*get)());
    });
    return box;
}

QWidget* SettingsView::buildMusicCard()
{
    auto* content = new QWidget;
    QVBoxLayout* layout = column(content, 10);
    layout->addWidget(sectionTitle(tr("Music"), this));
    const auto addSwitch = [&](const QString& text, bool (DownloadEngine::*get)() const,
                               void (DownloadEngine::*set)(bool),
                               void (DownloadEngine::*changed)()) {
        layout->addWidget(engineSwitch(text, get, set, changed, content));
    };
    addSwitch(tr("Square cover art"), &DownloadEngine::squareCover, &DownloadEngine::setSquareCover,
              &DownloadEngine::squareCoverChanged);
    addSwitch(tr("Read artist from titles"), &DownloadEngine::artistFromTitle,
              &DownloadEngine::setArtistFromTitle, &DownloadEngine::artistFromTitleChanged);
    QLabel* hint = label(tr("A title such as \"Artist - Song (Official Video)\" gives the artist "
                            "and the song when the site names neither."),
                         Theme::font(11), content);
    hint->setWordWrap(true);
    setTextColor(hint, secondaryText(palette()));
    layout->addWidget(hint);
    addSwitch(tr("Loudness tags"), &DownloadEngine::loudnessTags, &DownloadEngine::setLoudnessTags,
              &DownloadEngine::loudnessTagsChanged);
    return card(content, this);
}

QWidget* SettingsView::buildPlaybackCard()
{
    auto* content = new QWidget;
    QVBoxLayout* layout = column(content, 10);
    layout->addWidget(sectionTitle(tr("Playback"), this));
    using Mode = AudioPlayerService::GainMode;
    auto* modes = new QComboBox;
    modes->addItem(tr("Off"), QVariant::fromValue(Mode::off));
    modes->addItem(tr("Track"), QVariant::fromValue(Mode::track));
    modes->addItem(tr("Album"), QVariant::fromValue(Mode::album));
    modes->setCurrentIndex(modes->findData(QVariant::fromValue(m_player.gainMode())));
    connect(modes, &QComboBox::currentIndexChanged, this,
            [this, modes] { m_player.setGainMode(modes->currentData().value<Mode>()); });
    layout->addWidget(labelledRow(tr("Even out loudness"), modes, 0));
    if (m_queue) {
        auto* continues = new QCheckBox(tr("Continue with the next track"), content);
        continues->setFont(Theme::font(12));
        continues->setChecked(m_queue->continuesPlayback());
        connect(continues, &QCheckBox::toggled, m_queue, &PlaybackQueue::setContinuesPlayback);
        layout->addWidget(continues);
    }
    return card(content, this);
}

QWidget* SettingsView::buildToolsCard()
{
    auto* content = new QWidget;
    QVBoxLayout* layout = column(content, 14);

    auto* header = new QWidget(content);
    auto* headerRow = new QHBoxLayout(header);
    headerRow->setContentsMargins(0, 0, 0, 0);
    headerRow->addWidget(sectionTitle(tr("Engine & CLI Tools"), this));
    headerRow->addStretch(1);
    QPushButton* check = smallButton(tr("Check Dependencies"), QString(), header);
    connect(check, &QPushButton::clicked, &m_tools, &DependencyManager::checkDependencies);
    headerRow->addWidget(check);
    layout->addWidget(header);

    m_ytDlpRow = new ToolStatusRow(QStringLiteral("yt-dlp"), content);
    layout->addWidget(m_ytDlpRow);
    m_updateButton = smallButton(tr("Update yt-dlp"), QString(), m_ytDlpRow);
    connect(m_updateButton, &QPushButton::clicked, &m_updater, &ToolUpdater::updateYtDlp);
    m_ytDlpRow->addButton(m_updateButton);
    m_previousButton = smallButton(tr("Use previous version"), QString(), m_ytDlpRow);
    connect(m_previousButton, &QPushButton::clicked, &m_updater, &ToolUpdater::usePreviousYtDlp);
    m_ytDlpRow->addButton(m_previousButton);
    m_ffmpegRow = new ToolStatusRow(QStringLiteral("ffmpeg"), content);
    layout->addWidget(m_ffmpegRow);
    m_runtimeRow = new ToolStatusRow(tr("JavaScript runtime"), content);
    m_denoButton = smallButton(tr("Install"), QString(), m_runtimeRow);
    m_denoButton->setAccessibleName(tr("Install Deno"));
    connect(m_denoButton, &QPushButton::clicked, &m_updater, &ToolUpdater::installDeno);
    m_runtimeRow->addButton(m_denoButton);
    layout->addWidget(m_runtimeRow);

    // Nightly builds follow the sites faster; a change of channel is offered, not made.
    using ToolReleases::Channel;
    auto* channels = m_channelBox = new QComboBox;
    channels->addItem(tr("Stable"), ToolReleases::channelKey(Channel::stable));
    channels->addItem(tr("Nightly"), ToolReleases::channelKey(Channel::nightly));
    connect(channels, &QComboBox::activated, this, [this, channels] {
        if (const auto chosen = ToolReleases::channelFromKey(channels->currentData().toString()))
            m_updater.setChannel(*chosen);
    });
    QWidget* channelRow = labelledRow(tr("yt-dlp updates"), channels, 0);
    m_switchButton = smallButton(QString(), QString(), channelRow);
    connect(m_switchButton, &QPushButton::clicked, &m_updater, &ToolUpdater::updateYtDlp);
    static_cast<QHBoxLayout*>(channelRow->layout())->insertWidget(2, m_switchButton);
    layout->addWidget(channelRow);

    // What the running update does, or how the last one ended.
    m_updateRow = new QWidget(content);
    auto* updateLayout = new QHBoxLayout(m_updateRow);
    updateLayout->setContentsMargins(0, 0, 0, 0);
    updateLayout->setSpacing(8);
    m_updateSpinner = new ActivitySpinner(14, m_updateRow);
    updateLayout->addWidget(m_updateSpinner);
    m_updateMessage = new ElidedLabel(m_updateRow);
    m_updateMessage->setFont(Theme::font(11));
    setTextColor(m_updateMessage, orange(palette()));
    updateLayout->addWidget(m_updateMessage, 1);
    layout->addWidget(m_updateRow);

    m_installButton =
        smallButton(tr("Download & Install Missing Tools Automatically"), QString(), content);
    makeProminent(m_installButton, orange(palette()));
    connect(m_installButton, &QPushButton::clicked, &m_updater, &ToolUpdater::installMissing);
    layout->addWidget(m_installButton, 0, Qt::AlignLeft);

    // Sites that ask for a signed-in browser get its cookies through yt-dlp.
    m_cookiesBox = new QComboBox;
    m_cookiesBox->addItem(tr("None"), QString());
    for (const QString& browser : EnginePreferences::cookieBrowsers())
        m_cookiesBox->addItem(browserName(browser), browser);
    m_cookiesBox->setCurrentIndex(
        std::max(0, m_cookiesBox->findData(m_engine.cookiesFromBrowser())));
    connect(m_cookiesBox, &QComboBox::activated, this, [this] {
        m_engine.setCookiesFromBrowser(m_cookiesBox->currentData().toString());
        m_engine.savePreferences();
    });
    layout->addWidget(labelledRow(tr("Use cookies from"), m_cookiesBox, 4));
    addNetworkRows(layout);

    auto* automatic = new QCheckBox(tr("Check for tool updates automatically"), content);
    automatic->setFont(Theme::font(12));
    automatic->setChecked(m_updater.checksAutomatically());
    connect(automatic, &QCheckBox::toggled, &m_updater, &ToolUpdater::setChecksAutomatically);
    layout->addWidget(automatic);

    return card(content, this);
}

void SettingsView::addNetworkRows(QVBoxLayout* layout)
{
    m_proxyField = new QLineEdit;
    m_proxyField->setPlaceholderText(tr("None"));
    m_proxyField->setMinimumWidth(260);
    m_proxyField->setClearButtonEnabled(true);
    connect(m_proxyField, &QLineEdit::editingFinished, this, &SettingsView::applyProxy);
    layout->addWidget(labelledRow(tr("Proxy"), m_proxyField, 0));
    m_proxyError = label(proxyRefusedText(), Theme::font(11));
    m_proxyError->setWordWrap(true);
    setTextColor(m_proxyError, orange(palette()));
    layout->addWidget(m_proxyError);

    auto* limit = new QSpinBox;
    limit->setRange(0, EnginePreferences::kMaxSpeedLimitKBps);
    limit->setSingleStep(100);
    limit->setSuffix(tr(" KB/s"));
    // 0 reads as what it means.
    limit->setSpecialValueText(tr("No limit"));
    limit->setValue(m_engine.speedLimitKBps());
    connect(limit, &QSpinBox::valueChanged, this, [this](int value) {
        m_engine.setSpeedLimitKBps(value);
        m_engine.savePreferences();
    });
    layout->addWidget(labelledRow(tr("Download speed limit"), limit, 0));
}

QString SettingsView::proxyRefusedText()
{
    return tr("Not saved: a proxy is an http, https, socks4, socks4a, socks5 or socks5h link, "
              "such as socks5://127.0.0.1:1080.");
}

void SettingsView::applyProxy()
{
    const QString text = m_proxyField->text().trimmed();
    // A link yt-dlp cannot use is not saved; the line says what would be.
    if (!m_engine.setProxy(text)) {
        m_proxyError->show();
        return;
    }
    m_proxyError->hide();
    if (m_proxyField->text() != text)
        m_proxyField->setText(text);
    m_engine.savePreferences();
}

QWidget* SettingsView::buildAboutCard()
{
    auto* content = new QWidget;
    auto* row = new QHBoxLayout(content);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(14);
    row->addWidget(symbol(QStringLiteral("waveform.circle.fill"), orange(palette()), 32, content));
    auto* texts = new QWidget(content);
    QVBoxLayout* textColumn = column(texts, 2);
    textColumn->addWidget(label(DesktopTexts::aboutTitle(), Theme::font(13, QFont::Bold)));
    QLabel* version =
        label(tr("Version %1 (Native Qt %2 Widgets)")
                  .arg(QStringLiteral(VELDTONE_VERSION), QString::fromLatin1(qVersion())),
              Theme::font(11), texts);
    setTextColor(version, secondaryText(palette()));
    textColumn->addWidget(version);
    row->addWidget(texts, 1);
    return card(content, this);
}

QString SettingsView::sourceText(const std::optional<QString>& path, bool signedTool) const
{
    if (!path)
        return {};
    switch (m_tools.sourceOf(*path)) {
    case DependencyManager::ToolSource::veldtone:
        return signedTool ? tr("Installed by Veldtone · signature verified")
                          : tr("Installed by Veldtone · checksum verified");
    case DependencyManager::ToolSource::bundled:
        return tr("Shipped with Veldtone");
    case DependencyManager::ToolSource::system:
        return tr("System package");
    case DependencyManager::ToolSource::path:
        return tr("Found on PATH");
    }
    return {};
}

void SettingsView::updateTools()
{
    m_ytDlpRow->setTool(m_tools.ytDlpPath(), m_tools.ytDlpVersion());
    m_ytDlpRow->setSource(sourceText(m_tools.ytDlpPath(), true));
    m_ffmpegRow->setTool(m_tools.ffmpegPath(), m_tools.ffmpegVersion());
    m_ffmpegRow->setSource(sourceText(m_tools.ffmpegPath(), false));
    m_runtimeRow->setTool(m_tools.denoPath(), m_tools.denoVersion());
    m_runtimeRow->setSource(sourceText(m_tools.denoPath(), false));
    const bool runtime = m_tools.hasJavaScriptRuntime();
    m_runtimeRow->setNote(runtime              ? QString()
                          : m_tools.denoPath() ? tr("Needs Deno 2.3 or later")
                                               : tr("YouTube needs it for most videos"));

    const bool updating = m_updater.isUpdating();
    m_ytDlpRow->setNote(m_updater.ytDlpNote());
    m_updateButton->setVisible(m_tools.ytDlpPath().has_value());
    m_updateButton->setEnabled(!updating);
    // A system package is the system's to update; ours then takes precedence.
    const bool systemYtDlp = m_tools.ytDlpPath() && m_tools.sourceOf(*m_tools.ytDlpPath()) ==
                                                        DependencyManager::ToolSource::system;
    m_updateButton->setText(systemYtDlp ? tr("Install Veldtone's Copy") : tr("Update yt-dlp"));
    m_channelBox->setCurrentIndex(
        m_channelBox->findData(ToolReleases::channelKey(m_updater.channel())));
    m_switchButton->setVisible(m_updater.offersChannelSwitch());
    m_switchButton->setEnabled(!updating);
    m_switchButton->setText(m_updater.channel() == ToolUpdater::Channel::nightly
                                ? tr("Switch to Nightly")
                                : tr("Switch to Stable"));
    m_previousButton->setVisible(m_updater.hasPreviousYtDlp());
    m_previousButton->setEnabled(!updating);
    m_denoButton->setVisible(!runtime);
    m_denoButton->setEnabled(!updating);
    m_updateRow->setVisible(updating || !m_updater.message().isEmpty());
    m_updateSpinner->setVisible(updating);
    m_updateMessage->setText(m_updater.message());

    m_installButton->setVisible(!m_tools.isReady() && !updating);
}
