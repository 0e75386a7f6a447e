<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>ActivitySpinner</name>
    <message>
        <source>In progress</source>
        <translation>In Arbeit</translation>
    </message>
</context>
<context>
    <name>AudioFormat</name>
    <message>
        <source>MP3 (.mp3)</source>
        <translation>MP3 (.mp3)</translation>
    </message>
    <message>
        <source>M4A / AAC (.m4a)</source>
        <translation>M4A / AAC (.m4a)</translation>
    </message>
    <message>
        <source>FLAC Lossless (.flac)</source>
        <translation>FLAC verlustfrei (.flac)</translation>
    </message>
    <message>
        <source>WAV Uncompressed (.wav)</source>
        <translation>WAV unkomprimiert (.wav)</translation>
    </message>
    <message>
        <source>Opus (.opus)</source>
        <translation>Opus (.opus)</translation>
    </message>
</context>
<context>
    <name>AudioQuality</name>
    <message>
        <source>320 kbps (Extreme Quality)</source>
        <translation>320 kbit/s (höchste Qualität)</translation>
    </message>
    <message>
        <source>320 kbps</source>
        <translation>320 kbit/s</translation>
    </message>
    <message>
        <source>256 kbps (High Quality)</source>
        <translation>256 kbit/s (hohe Qualität)</translation>
    </message>
    <message>
        <source>256 kbps</source>
        <translation>256 kbit/s</translation>
    </message>
    <message>
        <source>192 kbps (Standard)</source>
        <translation>192 kbit/s (Standard)</translation>
    </message>
    <message>
        <source>192 kbps</source>
        <translation>192 kbit/s</translation>
    </message>
    <message>
        <source>128 kbps (Compact)</source>
        <translation>128 kbit/s (kompakt)</translation>
    </message>
    <message>
        <source>128 kbps</source>
        <translation>128 kbit/s</translation>
    </message>
    <message>
        <source>Best Available (Original)</source>
        <translation>Beste verfügbare (Original)</translation>
    </message>
    <message>
        <source>Best (Auto)</source>
        <translation>Beste (auto)</translation>
    </message>
</context>
<context>
    <name>BatchQueueModel</name>
    <message>
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
    <message>
        <source>Downloading %1%</source>
        <translation>Download %1 %</translation>
    </message>
    <message>
        <source>Converting...</source>
        <translation>Konvertiert...</translation>
    </message>
    <message>
        <source>Completed</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation>Fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>Already in Library</source>
        <translation>Schon in der Bibliothek</translation>
    </message>
</context>
<context>
    <name>BatchRunner</name>
    <message>
        <source>%1 of %2 completed</source>
        <translation>%1 von %2 fertig</translation>
    </message>
    <message>
        <source>%1, %2 skipped</source>
        <translation>%1, %2 übersprungen</translation>
    </message>
    <message>
        <source>Expanding playlist… %1</source>
        <translation>Playlist wird aufgelöst… %1</translation>
    </message>
    <message>
        <source>%1, %2 failed</source>
        <translation>%1, %2 fehlgeschlagen</translation>
    </message>
    <message numerus="yes">
        <source>YouTube is limiting requests; the batch waits %n minutes before it goes on.</source>
        <translation>
            <numerusform>YouTube begrenzt die Anfragen; der Stapel wartet %n Minute, bevor er weitergeht.</numerusform>
            <numerusform>YouTube begrenzt die Anfragen; der Stapel wartet %n Minuten, bevor er weitergeht.</numerusform>
        </translation>
    </message>
    <message>
        <source>The saved queue could not be read; it was kept aside and the queue starts empty.</source>
        <translation>Die gespeicherte Warteschlange war nicht lesbar; sie wurde beiseitegelegt, die Warteschlange beginnt leer.</translation>
    </message>
    <message>
        <source>1 rip was waiting when Veldtone closed.</source>
        <translation>1 Rip wartete, als Veldtone geschlossen wurde.</translation>
    </message>
    <message numerus="yes">
        <source>%n rips were waiting when Veldtone closed.</source>
        <translation>
            <numerusform>%n Rip wartete, als Veldtone geschlossen wurde.</numerusform>
            <numerusform>%n Rips warteten, als Veldtone geschlossen wurde.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BatchView</name>
    <message>
        <source>Batch</source>
        <translation>Stapel</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Warteschlange</translation>
    </message>
    <message>
        <source>Batch Audio Ripper</source>
        <translation>Stapel-Audio-Ripper</translation>
    </message>
    <message>
        <source>Paste multiple YouTube links to rip all audio at once</source>
        <translation>Mehrere YouTube-Links einfügen und den Ton aller Videos auf einmal rippen</translation>
    </message>
    <message>
        <source>Clear Queue</source>
        <translation>Warteschlange leeren</translation>
    </message>
    <message>
        <source>Enter YouTube links (one per line):</source>
        <translation>YouTube-Links eingeben (einer pro Zeile):</translation>
    </message>
    <message>
        <source>YouTube links, one per line</source>
        <translation>YouTube-Links, einer pro Zeile</translation>
    </message>
    <message>
        <source>Paste Clipboard</source>
        <translation>Aus der Zwischenablage einfügen</translation>
    </message>
    <message>
        <source>Add to Queue</source>
        <translation>Zur Warteschlange hinzufügen</translation>
    </message>
    <message>
        <source>Stop Batch</source>
        <translation>Stapel anhalten</translation>
    </message>
    <message>
        <source>Add More URLs</source>
        <translation>Weitere Links hinzufügen</translation>
    </message>
    <message numerus="yes">
        <source>Rip All (%n Tracks)</source>
        <translation>
            <numerusform>Alle rippen (%n Titel)</numerusform>
            <numerusform>Alle rippen (%n Titel)</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Rip Again</source>
        <translation>Erneut rippen</translation>
    </message>
    <message>
        <source>Retry Failed</source>
        <translation>Fehlgeschlagene wiederholen</translation>
    </message>
    <message>
        <source>Rip playlists as albums</source>
        <translation>Playlists als Alben rippen</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Ausblenden</translation>
    </message>
    <message>
        <source>Resume now</source>
        <translation>Jetzt fortsetzen</translation>
    </message>
    <message>
        <source>Follow Playlist</source>
        <translation>Playlist folgen</translation>
    </message>
</context>
<context>
    <name>ByteCount</name>
    <message>
        <source>%1 KB</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
    <message>
        <source>%1 TB</source>
        <translation>%1 TB</translation>
    </message>
    <message>
        <source>%1 PB</source>
        <translation>%1 PB</translation>
    </message>
    <message>
        <source>%1 EB</source>
        <translation>%1 EB</translation>
    </message>
    <message>
        <source>Zero KB</source>
        <translation>0 KB</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 Byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Bytes</translation>
    </message>
    <message>
        <source>.</source>
        <comment>decimal separator</comment>
        <translation>,</translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>The library could not be saved in %1 (%2). Changes are kept and saved with the next one.</source>
        <translation>Die Bibliothek konnte nicht in %1 gespeichert werden (%2). Die Änderungen bleiben erhalten und werden beim nächsten Mal gespeichert.</translation>
    </message>
</context>
<context>
    <name>ConverterView</name>
    <message>
        <source>Converter</source>
        <translation>Konverter</translation>
    </message>
    <message>
        <source>Rip Audio (%1)</source>
        <translation>Audio rippen (%1)</translation>
    </message>
    <message>
        <source>Rip studio-quality MP3 &amp; audio from YouTube videos</source>
        <translation>MP3 und Audio in Studioqualität aus YouTube-Videos rippen</translation>
    </message>
    <message>
        <source>YouTube Video Link</source>
        <translation>YouTube-Videolink</translation>
    </message>
    <message>
        <source>https://www.youtube.com/watch?v=dQw4w9WgXcQ or https://youtu.be/dQw4w9WgXcQ</source>
        <translation>https://www.youtube.com/watch?v=dQw4w9WgXcQ oder https://youtu.be/dQw4w9WgXcQ</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>New Rip</source>
        <translation>Neuer Rip</translation>
    </message>
    <message>
        <source>Ready (yt-dlp &amp; ffmpeg)</source>
        <translation>Bereit (yt-dlp &amp; ffmpeg)</translation>
    </message>
    <message>
        <source>Checking Tools</source>
        <translation>Werkzeuge werden geprüft</translation>
    </message>
    <message>
        <source>Extracting Audio...</source>
        <translation>Audio wird extrahiert...</translation>
    </message>
    <message>
        <source>Update Tools</source>
        <translation>Werkzeuge aktualisieren</translation>
    </message>
    <message>
        <source>yt-dlp %1 is out of date</source>
        <translation>yt-dlp %1 ist veraltet</translation>
    </message>
</context>
<context>
    <name>DesktopNotifier</name>
    <message>
        <source>Show</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <source>Show File</source>
        <translation>Datei zeigen</translation>
    </message>
</context>
<context>
    <name>DesktopTexts</name>
    <message>
        <source>Show in Folder</source>
        <translation>Im Ordner zeigen</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Ordner öffnen</translation>
    </message>
    <message>
        <source>Open in Default Player</source>
        <translation>Im Standard-Player öffnen</translation>
    </message>
    <message>
        <source>Veldtone for %1</source>
        <translation>Veldtone für %1</translation>
    </message>
</context>
<context>
    <name>DetailsRefresher</name>
    <message>
        <source>Refreshing details: %1 of %2</source>
        <translation>Details werden aktualisiert: %1 von %2</translation>
    </message>
</context>
<context>
    <name>DownloadEngine</name>
    <message>
        <source>yt-dlp is missing. Please check Settings.</source>
        <translation>yt-dlp fehlt. Bitte prüfen Sie die Einstellungen.</translation>
    </message>
    <message>
        <source>Please enter a valid YouTube URL.</source>
        <translation>Bitte geben Sie einen gültigen YouTube-Link ein.</translation>
    </message>
    <message>
        <source>Extracted Audio</source>
        <translation>Extrahiertes Audio</translation>
    </message>
    <message>
        <source>and 1 more track</source>
        <translation>und 1 weiterer Titel</translation>
    </message>
    <message>
        <source>and %1 more tracks</source>
        <translation>und %1 weitere Titel</translation>
    </message>
    <message>
        <source>%1 tracks in &quot;%2&quot;</source>
        <translation>%1 Titel in „%2“</translation>
    </message>
    <message>
        <source>No chapters; ripped as one file.</source>
        <translation>Keine Kapitel; als eine Datei gerippt.</translation>
    </message>
</context>
<context>
    <name>ExtractionJob</name>
    <message>
        <source>Cannot write to the folder %1</source>
        <translation>In den Ordner %1 kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>Download failed with exit code %1</source>
        <translation>Download mit Exit-Code %1 fehlgeschlagen</translation>
    </message>
    <message>
        <source>yt-dlp could not be started.</source>
        <translation>yt-dlp konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>Could not move &quot;%1&quot; into %2: %3</source>
        <translation>„%1“ konnte nicht nach %2 verschoben werden: %3</translation>
    </message>
    <message>
        <source>(kept in %1)</source>
        <translation>(aufbewahrt in %1)</translation>
    </message>
    <message>
        <source>Chapter %1</source>
        <translation>Kapitel %1</translation>
    </message>
    <message>
        <source>Measuring loudness...</source>
        <translation>Lautheit wird gemessen...</translation>
    </message>
</context>
<context>
    <name>FollowService</name>
    <message>
        <source>1 new track from %1</source>
        <translation>1 neuer Titel von %1</translation>
    </message>
    <message>
        <source>%1 new tracks from %2</source>
        <translation>%1 neue Titel von %2</translation>
    </message>
</context>
<context>
    <name>FollowingView</name>
    <message>
        <source>Following</source>
        <translation>Gefolgt</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>Noch nicht geprüft</translation>
    </message>
    <message>
        <source>Checked just now</source>
        <translation>Gerade geprüft</translation>
    </message>
    <message numerus="yes">
        <source>Checked %n minutes ago</source>
        <translation>
            <numerusform>Vor %n Minute geprüft</numerusform>
            <numerusform>Vor %n Minuten geprüft</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Checked %n hours ago</source>
        <translation>
            <numerusform>Vor %n Stunde geprüft</numerusform>
            <numerusform>Vor %n Stunden geprüft</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Checked %n days ago</source>
        <translation>
            <numerusform>Vor %n Tag geprüft</numerusform>
            <numerusform>Vor %n Tagen geprüft</numerusform>
        </translation>
    </message>
    <message>
        <source>New uploads of the channels and playlists you follow are ripped by themselves, each once.</source>
        <translation>Neue Uploads der Kanäle und Playlists, denen Sie folgen, werden von selbst gerippt, jeder einmal.</translation>
    </message>
    <message>
        <source>Check All</source>
        <translation>Alle prüfen</translation>
    </message>
    <message>
        <source>Nothing followed yet. Follow a channel or a playlist: Veldtone looks at it again after it starts and every few hours, and rips each new upload once, as you chose when you followed it.</source>
        <translation>Noch nichts gefolgt. Folgen Sie einem Kanal oder einer Playlist: Veldtone sieht nach dem Start und alle paar Stunden wieder nach und rippt jeden neuen Upload einmal, so wie beim Folgen gewählt.</translation>
    </message>
    <message>
        <source>A channel or playlist link</source>
        <translation>Ein Kanal- oder Playlist-Link</translation>
    </message>
    <message>
        <source>Channel or playlist link</source>
        <translation>Kanal- oder Playlist-Link</translation>
    </message>
    <message>
        <source>Follow</source>
        <translation>Folgen</translation>
    </message>
    <message>
        <source>Also rip the latest</source>
        <translation>Auch die neuesten rippen</translation>
    </message>
    <message>
        <source>Rip as album</source>
        <translation>Als Album rippen</translation>
    </message>
    <message>
        <source>That link is followed already, or is not a web link.</source>
        <translation>Diesem Link wird schon gefolgt, oder er ist kein Weblink.</translation>
    </message>
    <message>
        <source>as album</source>
        <translation>als Album</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>Wird geprüft…</translation>
    </message>
    <message numerus="yes">
        <source>%n tracks found</source>
        <translation>
            <numerusform>%n Titel gefunden</numerusform>
            <numerusform>%n Titel gefunden</numerusform>
        </translation>
    </message>
    <message>
        <source>Format for %1</source>
        <translation>Format für %1</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Jetzt prüfen</translation>
    </message>
    <message>
        <source>Check %1 now</source>
        <translation>%1 jetzt prüfen</translation>
    </message>
    <message>
        <source>Unfollow</source>
        <translation>Nicht mehr folgen</translation>
    </message>
    <message>
        <source>Unfollow %1</source>
        <translation>%1 nicht mehr folgen</translation>
    </message>
    <message>
        <source>Unfollow %1?</source>
        <translation>%1 nicht mehr folgen?</translation>
    </message>
    <message>
        <source>New uploads are no longer ripped. The files and library records ripped so far stay.</source>
        <translation>Neue Uploads werden nicht mehr gerippt. Die bisher gerippten Dateien und Bibliothekseinträge bleiben.</translation>
    </message>
</context>
<context>
    <name>HistoryStore</name>
    <message>
        <source>a record has a date that cannot be written</source>
        <translation>ein Eintrag hat ein Datum, das sich nicht schreiben lässt</translation>
    </message>
    <message>
        <source>the unreadable library file could not be moved aside</source>
        <translation>die unlesbare Bibliotheksdatei konnte nicht beiseitegelegt werden</translation>
    </message>
</context>
<context>
    <name>HistoryView</name>
    <message>
        <source>MP3</source>
        <translation>MP3</translation>
    </message>
    <message>
        <source>M4A / AAC</source>
        <translation>M4A / AAC</translation>
    </message>
    <message>
        <source>FLAC (Lossless)</source>
        <translation>FLAC (verlustfrei)</translation>
    </message>
    <message>
        <source>WAV</source>
        <translation>WAV</translation>
    </message>
    <message>
        <source>OPUS</source>
        <translation>OPUS</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>Tracks</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>All Formats</source>
        <translation>Alle Formate</translation>
    </message>
    <message>
        <source>Search tracks...</source>
        <translation>Titel suchen...</translation>
    </message>
    <message>
        <source>Search tracks</source>
        <translation>Titel suchen</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Suche leeren</translation>
    </message>
    <message>
        <source>Format filter</source>
        <translation>Formatfilter</translation>
    </message>
    <message>
        <source>Clear All</source>
        <translation>Alle löschen</translation>
    </message>
    <message>
        <source>Clear all history items</source>
        <translation>Alle Einträge aus dem Verlauf löschen</translation>
    </message>
    <message>
        <source>No Ripped Audio Yet</source>
        <translation>Noch kein Audio gerippt</translation>
    </message>
    <message>
        <source>Extracted YouTube tracks and MP3s will appear here.</source>
        <translation>Extrahierte YouTube-Titel und MP3s erscheinen hier.</translation>
    </message>
    <message>
        <source>No Matching Tracks</source>
        <translation>Keine passenden Titel</translation>
    </message>
    <message>
        <source>Try searching with different terms or selecting &apos;All Formats&apos;.</source>
        <translation>Suchen Sie mit anderen Begriffen oder wählen Sie „Alle Formate“.</translation>
    </message>
    <message>
        <source>Reset Filters</source>
        <translation>Filter zurücksetzen</translation>
    </message>
    <message>
        <source>Loading Library…</source>
        <translation>Bibliothek wird geladen…</translation>
    </message>
    <message>
        <source>Play Track</source>
        <translation>Titel abspielen</translation>
    </message>
    <message>
        <source>Copy File Path</source>
        <translation>Dateipfad kopieren</translation>
    </message>
    <message>
        <source>Copy YouTube Link</source>
        <translation>YouTube-Link kopieren</translation>
    </message>
    <message>
        <source>Remove from Library</source>
        <translation>Aus der Bibliothek entfernen</translation>
    </message>
    <message>
        <source>Remove &quot;%1&quot; from your library history?</source>
        <translation>„%1“ aus dem Verlauf Ihrer Bibliothek entfernen?</translation>
    </message>
    <message>
        <source>Remove track from history?</source>
        <translation>Titel aus dem Verlauf entfernen?</translation>
    </message>
    <message>
        <source>Delete Track from Library?</source>
        <translation>Titel aus der Bibliothek löschen?</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Clear Download History?</source>
        <translation>Download-Verlauf löschen?</translation>
    </message>
    <message>
        <source>This will remove all tracks from your library list. Your downloaded audio files will remain in your folders.</source>
        <translation>Damit werden alle Titel aus Ihrer Bibliotheksliste entfernt. Ihre heruntergeladenen Audiodateien bleiben in Ihren Ordnern.</translation>
    </message>
    <message>
        <source>Cancel refreshing details</source>
        <translation>Aktualisieren der Details abbrechen</translation>
    </message>
    <message>
        <source>Library actions</source>
        <translation>Aktionen der Mediathek</translation>
    </message>
    <message>
        <source>Refresh All Details</source>
        <translation>Alle Details aktualisieren</translation>
    </message>
    <message>
        <source>Refresh Details</source>
        <translation>Details aktualisieren</translation>
    </message>
</context>
<context>
    <name>LibraryListModel</name>
    <message>
        <source>%1, Playing</source>
        <translation>%1, wird abgespielt</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Play / Pause</source>
        <translation>Abspielen / Pause</translation>
    </message>
    <message>
        <source>Stop Playback</source>
        <translation>Wiedergabe stoppen</translation>
    </message>
    <message>
        <source>A Rip Is Running</source>
        <translation>Ein Rip läuft</translation>
    </message>
    <message>
        <source>Stop the running rip and quit?</source>
        <translation>Den laufenden Rip abbrechen und beenden?</translation>
    </message>
    <message>
        <source>Stop and Quit</source>
        <translation>Abbrechen und beenden</translation>
    </message>
    <message>
        <source>Rip finished</source>
        <translation>Rip abgeschlossen</translation>
    </message>
    <message>
        <source>Batch finished: %1</source>
        <translation>Stapel abgeschlossen: %1</translation>
    </message>
    <message>
        <source>Rips Are Running</source>
        <translation>Rips laufen</translation>
    </message>
    <message>
        <source>Stop %1 rips and quit?</source>
        <translation>%1 Rips anhalten und beenden?</translation>
    </message>
    <message>
        <source>Rip failed: %1</source>
        <translation>Rip fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>Not a link</source>
        <translation>Kein Link</translation>
    </message>
    <message>
        <source>Veldtone rips from links to videos; drop a link from a browser, not a file.</source>
        <translation>Veldtone rippt aus Links zu Videos; ziehen Sie einen Link aus dem Browser hierher, keine Datei.</translation>
    </message>
</context>
<context>
    <name>MetadataFetch</name>
    <message>
        <source>Unknown Title</source>
        <translation>Unbekannter Titel</translation>
    </message>
    <message>
        <source>Unknown Artist</source>
        <translation>Unbekannter Interpret</translation>
    </message>
    <message>
        <source>yt-dlp could not be started.</source>
        <translation>yt-dlp konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>yt-dlp stopped answering.</source>
        <translation>yt-dlp antwortet nicht mehr.</translation>
    </message>
</context>
<context>
    <name>MiniPlayerView</name>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Close Player</source>
        <translation>Player schließen</translation>
    </message>
    <message>
        <source>Mini Player</source>
        <translation>Mini-Player</translation>
    </message>
    <message>
        <source>Playback Position</source>
        <translation>Wiedergabeposition</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Lautstärke</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Previous Track</source>
        <translation>Vorheriger Titel</translation>
    </message>
    <message>
        <source>Next Track</source>
        <translation>Nächster Titel</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>MissingToolsCard</name>
    <message>
        <source>Tools Missing (yt-dlp or ffmpeg)</source>
        <translation>Werkzeuge fehlen (yt-dlp oder ffmpeg)</translation>
    </message>
    <message>
        <source>Install Automatically</source>
        <translation>Automatisch installieren</translation>
    </message>
    <message>
        <source>Veldtone can automatically download and set up yt-dlp &amp; ffmpeg for you.</source>
        <translation>Veldtone kann yt-dlp &amp; ffmpeg automatisch für Sie herunterladen und einrichten.</translation>
    </message>
</context>
<context>
    <name>Navigation</name>
    <message>
        <source>Convert</source>
        <translation>Konvertieren</translation>
    </message>
    <message>
        <source>Batch</source>
        <translation>Stapel</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Following</source>
        <translation>Gefolgt</translation>
    </message>
</context>
<context>
    <name>OutputOptionsForm</name>
    <message>
        <source>Destination Folder</source>
        <translation>Zielordner</translation>
    </message>
    <message>
        <source>Default Download Folder</source>
        <translation>Standard-Downloadordner</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>Wählen...</translation>
    </message>
    <message>
        <source>Change...</source>
        <translation>Ändern...</translation>
    </message>
    <message>
        <source>Audio Format</source>
        <translation>Audioformat</translation>
    </message>
    <message>
        <source>Default Format</source>
        <translation>Standardformat</translation>
    </message>
    <message>
        <source>Audio Quality</source>
        <translation>Audioqualität</translation>
    </message>
    <message>
        <source>Default Bitrate</source>
        <translation>Standard-Bitrate</translation>
    </message>
    <message>
        <source>Lossless / Best Stream</source>
        <translation>Verlustfrei / bester Stream</translation>
    </message>
    <message>
        <source>Embed Album Artwork</source>
        <translation>Album-Cover einbetten</translation>
    </message>
    <message>
        <source>Embed ID3 Tags</source>
        <translation>ID3-Tags einbetten</translation>
    </message>
    <message>
        <source>Always embed YouTube thumbnail as album cover artwork</source>
        <translation>YouTube-Vorschaubild immer als Album-Cover einbetten</translation>
    </message>
    <message>
        <source>Always embed ID3 audio tags (Title, Artist, Channel, Album)</source>
        <translation>ID3-Tags immer einbetten (Titel, Interpret, Kanal, Album)</translation>
    </message>
    <message>
        <source>Select Download Folder</source>
        <translation>Downloadordner auswählen</translation>
    </message>
    <message>
        <source>Square cover art</source>
        <translation>Quadratisches Cover</translation>
    </message>
    <message>
        <source>Split by chapters</source>
        <translation>Nach Kapiteln teilen</translation>
    </message>
</context>
<context>
    <name>PlaylistListing</name>
    <message>
        <source>yt-dlp could not be started.</source>
        <translation>yt-dlp konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>Could not list the playlist: %1</source>
        <translation>Die Playlist konnte nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>The playlist has no tracks.</source>
        <translation>Die Playlist enthält keine Titel.</translation>
    </message>
</context>
<context>
    <name>PlaylistOfferCard</name>
    <message>
        <source>This link is a playlist.</source>
        <translation>Dieser Link ist eine Playlist.</translation>
    </message>
    <message>
        <source>Rip as album</source>
        <translation>Als Album rippen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancel Listing</source>
        <translation>Auflisten abbrechen</translation>
    </message>
    <message>
        <source>Follow</source>
        <translation>Folgen</translation>
    </message>
    <message numerus="yes">
        <source>Rip all %n tracks in Batch</source>
        <translation>
            <numerusform>%n Titel im Stapel rippen</numerusform>
            <numerusform>Alle %n Titel im Stapel rippen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RipFailureCard</name>
    <message>
        <source>Extraction Failed</source>
        <translation>Extraktion fehlgeschlagen</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Update Tools</source>
        <translation>Werkzeuge aktualisieren</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Einstellungen öffnen</translation>
    </message>
</context>
<context>
    <name>RipProgressCard</name>
    <message>
        <source>Downloading Audio...</source>
        <translation>Audio wird heruntergeladen...</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Download-Fortschritt</translation>
    </message>
    <message>
        <source>Cancel Download</source>
        <translation>Download abbrechen</translation>
    </message>
    <message>
        <source>ETA: %1</source>
        <translation>Restzeit: %1</translation>
    </message>
</context>
<context>
    <name>RipSuccessCard</name>
    <message>
        <source>Extraction Complete!</source>
        <translation>Extraktion abgeschlossen!</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Queue the whole playlist</source>
        <translation>Ganze Playlist einreihen</translation>
    </message>
    <message>
        <source>Playing; press to pause</source>
        <translation>Wird abgespielt; drücken zum Pausieren</translation>
    </message>
    <message>
        <source>Press to play</source>
        <translation>Drücken zum Abspielen</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>General Defaults</source>
        <translation>Allgemeine Vorgaben</translation>
    </message>
    <message>
        <source>Engine &amp; CLI Tools</source>
        <translation>Engine &amp; Kommandozeilen-Werkzeuge</translation>
    </message>
    <message>
        <source>Check Dependencies</source>
        <translation>Abhängigkeiten prüfen</translation>
    </message>
    <message>
        <source>Download &amp; Install Missing Tools Automatically</source>
        <translation>Fehlende Werkzeuge automatisch herunterladen &amp; installieren</translation>
    </message>
    <message>
        <source>Version %1 (Native Qt %2 Widgets)</source>
        <translation>Version %1 (native Qt-%2-Widgets)</translation>
    </message>
    <message>
        <source>Use cookies from</source>
        <translation>Cookies verwenden von</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keinem</translation>
    </message>
    <message>
        <source>Update yt-dlp</source>
        <translation>yt-dlp aktualisieren</translation>
    </message>
    <message>
        <source>Use previous version</source>
        <translation>Vorherige Version verwenden</translation>
    </message>
    <message>
        <source>JavaScript runtime</source>
        <translation>JavaScript-Laufzeit</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>Install Deno</source>
        <translation>Deno installieren</translation>
    </message>
    <message>
        <source>Check for tool updates automatically</source>
        <translation>Automatisch nach Werkzeug-Updates suchen</translation>
    </message>
    <message>
        <source>Needs Deno 2.3 or later</source>
        <translation>Benötigt Deno 2.3 oder neuer</translation>
    </message>
    <message>
        <source>YouTube needs it for most videos</source>
        <translation>YouTube braucht sie für die meisten Videos</translation>
    </message>
    <message>
        <source>Simultaneous rips</source>
        <translation>Gleichzeitige Rips</translation>
    </message>
    <message>
        <source>Proxy</source>
        <translation>Proxy</translation>
    </message>
    <message>
        <source> KB/s</source>
        <translation> KB/s</translation>
    </message>
    <message>
        <source>No limit</source>
        <translation>Keine Grenze</translation>
    </message>
    <message>
        <source>Download speed limit</source>
        <translation>Download-Geschwindigkeit begrenzen</translation>
    </message>
    <message>
        <source>Not saved: a proxy is an http, https, socks4, socks4a, socks5 or socks5h link, such as socks5://127.0.0.1:1080.</source>
        <translation>Nicht gespeichert: Ein Proxy ist ein http-, https-, socks4-, socks4a-, socks5- oder socks5h-Link, etwa socks5://127.0.0.1:1080.</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musik</translation>
    </message>
    <message>
        <source>Square cover art</source>
        <translation>Quadratisches Cover</translation>
    </message>
    <message>
        <source>Read artist from titles</source>
        <translation>Interpret aus Titeln lesen</translation>
    </message>
    <message>
        <source>A title such as &quot;Artist - Song (Official Video)&quot; gives the artist and the song when the site names neither.</source>
        <translation>Ein Titel wie „Interpret - Song (Official Video)“ liefert Interpret und Song, wenn die Seite keine nennt.</translation>
    </message>
    <message>
        <source>Loudness tags</source>
        <translation>Lautheits-Tags</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Even out loudness</source>
        <translation>Lautstärke angleichen</translation>
    </message>
    <message>
        <source>Stable</source>
        <translation>Stabil</translation>
    </message>
    <message>
        <source>Nightly</source>
        <translation>Nightly</translation>
    </message>
    <message>
        <source>yt-dlp updates</source>
        <translation>yt-dlp-Updates</translation>
    </message>
    <message>
        <source>Installed by Veldtone · signature verified</source>
        <translation>Von Veldtone installiert · Signatur geprüft</translation>
    </message>
    <message>
        <source>Installed by Veldtone · checksum verified</source>
        <translation>Von Veldtone installiert · Prüfsumme geprüft</translation>
    </message>
    <message>
        <source>Shipped with Veldtone</source>
        <translation>Mit Veldtone geliefert</translation>
    </message>
    <message>
        <source>System package</source>
        <translation>Systempaket</translation>
    </message>
    <message>
        <source>Found on PATH</source>
        <translation>Im PATH gefunden</translation>
    </message>
    <message>
        <source>Install Veldtone&apos;s Copy</source>
        <translation>Veldtones Kopie installieren</translation>
    </message>
    <message>
        <source>Switch to Nightly</source>
        <translation>Zu Nightly wechseln</translation>
    </message>
    <message>
        <source>Switch to Stable</source>
        <translation>Zu Stabil wechseln</translation>
    </message>
    <message>
        <source>Pause between rips in long batches</source>
        <translation>In langen Stapeln zwischen Rips pausieren</translation>
    </message>
    <message>
        <source>Every hour</source>
        <translation>Stündlich</translation>
    </message>
    <message>
        <source>Every 6 hours</source>
        <translation>Alle 6 Stunden</translation>
    </message>
    <message>
        <source>Every day</source>
        <translation>Täglich</translation>
    </message>
    <message>
        <source>Only when asked</source>
        <translation>Nur auf Wunsch</translation>
    </message>
    <message>
        <source>Check followed links</source>
        <translation>Gefolgte Links prüfen</translation>
    </message>
    <message>
        <source>Continue with the next track</source>
        <translation>Mit dem nächsten Titel weitermachen</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Sidebar</source>
        <translation>Seitenleiste</translation>
    </message>
</context>
<context>
    <name>SidebarRow</name>
    <message numerus="yes">
        <source>%n tracks</source>
        <translation>
            <numerusform>%n Titel</numerusform>
            <numerusform>%n Titel</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n rips waiting</source>
        <translation>
            <numerusform>%n Rip wartet</numerusform>
            <numerusform>%n Rips warten</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ToolAdvice</name>
    <message>
        <source>The site wants a signed-in browser. Choose one under &quot;Use cookies from&quot; in Settings.</source>
        <translation>Die Website verlangt einen angemeldeten Browser. Wählen Sie ihn unter &quot;Cookies verwenden von&quot; in den Einstellungen.</translation>
    </message>
    <message>
        <source>yt-dlp may be too old for this site, or lack its JavaScript runtime.</source>
        <translation>yt-dlp ist für diese Seite womöglich zu alt, oder ihm fehlt die JavaScript-Laufzeit.</translation>
    </message>
</context>
<context>
    <name>ToolOutputReader</name>
    <message>
        <source>Converting audio to %1 (%2)...</source>
        <translation>Audio wird in %1 (%2) umgewandelt...</translation>
    </message>
    <message>
        <source>Embedding album artwork...</source>
        <translation>Album-Cover wird eingebettet...</translation>
    </message>
    <message>
        <source>Embedding audio tags...</source>
        <translation>Audio-Tags werden eingebettet...</translation>
    </message>
    <message>
        <source>Unknown extraction error</source>
        <translation>Unbekannter Fehler bei der Extraktion</translation>
    </message>
</context>
<context>
    <name>ToolStatusRow</name>
    <message>
        <source>Found</source>
        <translation>Gefunden</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Fehlt</translation>
    </message>
    <message>
        <source>Not found in standard paths</source>
        <translation>In den Standardpfaden nicht gefunden</translation>
    </message>
    <message>
        <source>%1: found</source>
        <translation>%1: gefunden</translation>
    </message>
    <message>
        <source>%1: missing</source>
        <translation>%1: fehlt</translation>
    </message>
    <message>
        <source>%1, version %2</source>
        <translation>%1, Version %2</translation>
    </message>
</context>
<context>
    <name>ToolUpdater</name>
    <message>
        <source>Update available: %1</source>
        <translation>Update verfügbar: %1</translation>
    </message>
    <message>
        <source>Out of date</source>
        <translation>Veraltet</translation>
    </message>
    <message>
        <source>Looking for the latest %1...</source>
        <translation>Suche nach der neuesten Version von %1...</translation>
    </message>
    <message>
        <source>Could not reach the %1 releases.</source>
        <translation>Die Veröffentlichungen von %1 sind nicht erreichbar.</translation>
    </message>
    <message>
        <source>%1 %2 is the latest.</source>
        <translation>%1 %2 ist die neueste Version.</translation>
    </message>
    <message>
        <source>Downloading %1 %2...</source>
        <translation>%1 %2 wird geladen...</translation>
    </message>
    <message>
        <source>Could not download %1.</source>
        <translation>%1 konnte nicht geladen werden.</translation>
    </message>
    <message>
        <source>The downloaded %1 does not match its published checksum; nothing was replaced.</source>
        <translation>Das geladene %1 passt nicht zu seiner veröffentlichten Prüfsumme; nichts wurde ersetzt.</translation>
    </message>
    <message>
        <source>%1 %2 installed.</source>
        <translation>%1 %2 installiert.</translation>
    </message>
    <message>
        <source>Could not put %1 into %2.</source>
        <translation>%1 konnte nicht nach %2 gelegt werden.</translation>
    </message>
    <message>
        <source>There is no %1 build for this machine.</source>
        <translation>Für diesen Rechner gibt es kein %1.</translation>
    </message>
    <message>
        <source>Downloading %1...</source>
        <translation>%1 wird geladen...</translation>
    </message>
    <message>
        <source>Could not download the checksums of %1.</source>
        <translation>Die Prüfsummen von %1 konnten nicht geladen werden.</translation>
    </message>
    <message>
        <source>Verifying and installing %1...</source>
        <translation>%1 wird geprüft und installiert...</translation>
    </message>
    <message>
        <source>Verifying and installing %1 %2...</source>
        <translation>%1 %2 wird geprüft und installiert...</translation>
    </message>
    <message>
        <source>%1 installed.</source>
        <translation>%1 installiert.</translation>
    </message>
    <message>
        <source>The %1 release is not signed by its maintainers&apos; key; nothing was replaced.</source>
        <translation>Die %1-Version ist nicht mit dem Schlüssel ihrer Betreuer signiert; nichts wurde ersetzt.</translation>
    </message>
    <message>
        <source>The downloaded %1 could not be unpacked; nothing was replaced.</source>
        <translation>Das geladene %1 konnte nicht entpackt werden; nichts wurde ersetzt.</translation>
    </message>
    <message>
        <source>The new %1 did not run; nothing was replaced.</source>
        <translation>Das neue %1 ließ sich nicht ausführen; nichts wurde ersetzt.</translation>
    </message>
</context>
<context>
    <name>TrackDelegate</name>
    <message>
        <source>Remove from library</source>
        <translation>Aus der Bibliothek entfernen</translation>
    </message>
</context>
<context>
    <name>TrackListView</name>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Remove from Library</source>
        <translation>Aus der Bibliothek entfernen</translation>
    </message>
</context>
</TS>
