<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR" sourcelanguage="en">
<context>
    <name>ActivitySpinner</name>
    <message>
        <source>In progress</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AudioFormat</name>
    <message>
        <source>MP3 (.mp3)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>M4A / AAC (.m4a)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FLAC Lossless (.flac)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>WAV Uncompressed (.wav)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opus (.opus)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AudioQuality</name>
    <message>
        <source>320 kbps (Extreme Quality)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>320 kbps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>256 kbps (High Quality)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>256 kbps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>192 kbps (Standard)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>192 kbps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>128 kbps (Compact)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>128 kbps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Best Available (Original)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Best (Auto)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BatchQueueModel</name>
    <message>
        <source>Waiting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading %1%</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Converting...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Completed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BatchRunner</name>
    <message>
        <source>%1 of %2 completed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another rip is already running.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BatchView</name>
    <message>
        <source>Batch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Queue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Batch Audio Ripper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paste multiple YouTube links to rip all audio at once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear Queue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter YouTube links (one per line):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>YouTube links, one per line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paste Clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add to Queue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Batch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add More URLs</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Rip All (%n Tracks)</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ByteCount</name>
    <message>
        <source>%1 KB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 TB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 PB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 EB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zero KB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>.</source>
        <comment>decimal separator</comment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>The library could not be saved in %1 (%2). Changes are kept and saved with the next one.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ConverterView</name>
    <message>
        <source>Converter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rip Audio (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rip studio-quality MP3 &amp; audio from YouTube videos</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tools Missing (yt-dlp or ffmpeg)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install Automatically</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>YouTube Video Link</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>https://www.youtube.com/watch?v=dQw4w9WgXcQ or https://youtu.be/dQw4w9WgXcQ</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paste</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading Audio...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel Download</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extraction Complete!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extraction Failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Rip</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ready (yt-dlp &amp; ffmpeg)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking Tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Veldtone can automatically download and set up yt-dlp &amp; ffmpeg for you.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ETA: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Playing; press to pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Press to play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extracting Audio...</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DependencyManager</name>
    <message>
        <source>Preparing installation directory...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading yt-dlp...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading ffmpeg...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Verifying installed tools...</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DesktopTexts</name>
    <message>
        <source>Show in Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open in Default Player</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Veldtone for %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DownloadEngine</name>
    <message>
        <source>yt-dlp is missing. Please check Settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please enter a valid YouTube URL.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extracted Audio</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExtractionJob</name>
    <message>
        <source>Cannot write to the folder %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Download failed with exit code %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HistoryStore</name>
    <message>
        <source>a record has a date that cannot be written</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the unreadable library file could not be moved aside</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HistoryView</name>
    <message>
        <source>MP3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>M4A / AAC</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FLAC (Lossless)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>WAV</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OPUS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tracks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All Formats</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search tracks...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search tracks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Format filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear all history items</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No Ripped Audio Yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extracted YouTube tracks and MP3s will appear here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No Matching Tracks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try searching with different terms or selecting &apos;All Formats&apos;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset Filters</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loading Library…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play Track</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy File Path</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy YouTube Link</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove from Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove &quot;%1&quot; from your library history?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove track from history?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Track from Library?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear Download History?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This will remove all tracks from your library list. Your downloaded audio files will remain in your folders.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LibraryListModel</name>
    <message>
        <source>%1, Playing</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Playback</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play / Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Playback</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MetadataFetch</name>
    <message>
        <source>Unknown Title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown Artist</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MiniPlayerView</name>
    <message>
        <source>Play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close Player</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mini Player</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Playback Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Volume</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Navigation</name>
    <message>
        <source>Convert</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Batch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OutputOptionsForm</name>
    <message>
        <source>Destination Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Default Download Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Audio Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Default Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Audio Quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Default Bitrate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lossless / Best Stream</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Embed Album Artwork</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Embed ID3 Tags</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Always embed YouTube thumbnail as album cover artwork</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Always embed ID3 audio tags (Title, Artist, Channel, Album)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select Download Folder</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>General Defaults</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Engine &amp; CLI Tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check Dependencies</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Download &amp; Install Missing Tools Automatically</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 (Native Qt %2 Widgets)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Sidebar</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SidebarRow</name>
    <message numerus="yes">
        <source>%n tracks</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ToolOutputReader</name>
    <message>
        <source>Converting audio to %1 (%2)...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Embedding album artwork...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Embedding audio tags...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown extraction error</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ToolStatusRow</name>
    <message>
        <source>Found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not found in standard paths</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, version %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TrackDelegate</name>
    <message>
        <source>Remove from library</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TrackListView</name>
    <message>
        <source>Play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove from Library</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
