<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES" sourcelanguage="en">
<context>
    <name>ActivitySpinner</name>
    <message>
        <source>In progress</source>
        <translation>En curso</translation>
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
        <translation>FLAC sin pérdida (.flac)</translation>
    </message>
    <message>
        <source>WAV Uncompressed (.wav)</source>
        <translation>WAV sin comprimir (.wav)</translation>
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
        <translation>320 kbps (calidad máxima)</translation>
    </message>
    <message>
        <source>320 kbps</source>
        <translation>320 kbps</translation>
    </message>
    <message>
        <source>256 kbps (High Quality)</source>
        <translation>256 kbps (alta calidad)</translation>
    </message>
    <message>
        <source>256 kbps</source>
        <translation>256 kbps</translation>
    </message>
    <message>
        <source>192 kbps (Standard)</source>
        <translation>192 kbps (estándar)</translation>
    </message>
    <message>
        <source>192 kbps</source>
        <translation>192 kbps</translation>
    </message>
    <message>
        <source>128 kbps (Compact)</source>
        <translation>128 kbps (compacta)</translation>
    </message>
    <message>
        <source>128 kbps</source>
        <translation>128 kbps</translation>
    </message>
    <message>
        <source>Best Available (Original)</source>
        <translation>La mejor disponible (original)</translation>
    </message>
    <message>
        <source>Best (Auto)</source>
        <translation>La mejor (auto)</translation>
    </message>
</context>
<context>
    <name>BatchQueueModel</name>
    <message>
        <source>Waiting</source>
        <translation>En espera</translation>
    </message>
    <message>
        <source>Downloading %1%</source>
        <translation>Descargando %1 %</translation>
    </message>
    <message>
        <source>Converting...</source>
        <translation>Convirtiendo...</translation>
    </message>
    <message>
        <source>Completed</source>
        <translation>Completado</translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation>Error: %1</translation>
    </message>
    <message>
        <source>Already in Library</source>
        <translation>Ya en la biblioteca</translation>
    </message>
</context>
<context>
    <name>BatchRunner</name>
    <message>
        <source>%1 of %2 completed</source>
        <translation>%1 de %2 completados</translation>
    </message>
    <message>
        <source>%1, %2 skipped</source>
        <translation>%1, %2 omitidos</translation>
    </message>
    <message>
        <source>Expanding playlist… %1</source>
        <translation>Expandiendo la lista… %1</translation>
    </message>
    <message>
        <source>%1, %2 failed</source>
        <translation>%1, %2 fallidos</translation>
    </message>
    <message numerus="yes">
        <source>YouTube is limiting requests; the batch waits %n minutes before it goes on.</source>
        <translation>
            <numerusform>YouTube está limitando las solicitudes; el lote espera %n minuto antes de continuar.</numerusform>
            <numerusform>YouTube está limitando las solicitudes; el lote espera %n minutos antes de continuar.</numerusform>
        </translation>
    </message>
    <message>
        <source>The saved queue could not be read; it was kept aside and the queue starts empty.</source>
        <translation>No se pudo leer la cola guardada; se apartó y la cola empieza vacía.</translation>
    </message>
    <message>
        <source>1 rip was waiting when Veldtone closed.</source>
        <translation>1 extracción esperaba cuando Veldtone se cerró.</translation>
    </message>
    <message numerus="yes">
        <source>%n rips were waiting when Veldtone closed.</source>
        <translation>
            <numerusform>%n extracción esperaba cuando Veldtone se cerró.</numerusform>
            <numerusform>%n extracciones esperaban cuando Veldtone se cerró.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BatchView</name>
    <message>
        <source>Batch</source>
        <translation>Lote</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Cola</translation>
    </message>
    <message>
        <source>Batch Audio Ripper</source>
        <translation>Extracción de audio por lotes</translation>
    </message>
    <message>
        <source>Paste multiple YouTube links to rip all audio at once</source>
        <translation>Pega varios enlaces de YouTube para extraer todo el audio de una vez</translation>
    </message>
    <message>
        <source>Clear Queue</source>
        <translation>Vaciar cola</translation>
    </message>
    <message>
        <source>Enter YouTube links (one per line):</source>
        <translation>Introduce enlaces de YouTube (uno por línea):</translation>
    </message>
    <message>
        <source>YouTube links, one per line</source>
        <translation>Enlaces de YouTube, uno por línea</translation>
    </message>
    <message>
        <source>Paste Clipboard</source>
        <translation>Pegar del portapapeles</translation>
    </message>
    <message>
        <source>Add to Queue</source>
        <translation>Añadir a la cola</translation>
    </message>
    <message>
        <source>Stop Batch</source>
        <translation>Detener lote</translation>
    </message>
    <message>
        <source>Add More URLs</source>
        <translation>Añadir más enlaces</translation>
    </message>
    <message numerus="yes">
        <source>Rip All (%n Tracks)</source>
        <translation>
            <numerusform>Extraer todo (%n pista)</numerusform>
            <numerusform>Extraer todo (%n pistas)</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Quitar</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Rip Again</source>
        <translation>Extraer de nuevo</translation>
    </message>
    <message>
        <source>Retry Failed</source>
        <translation>Reintentar los fallidos</translation>
    </message>
    <message>
        <source>Rip playlists as albums</source>
        <translation>Extraer listas como álbumes</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reanudar</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Vaciar</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Descartar</translation>
    </message>
    <message>
        <source>Resume now</source>
        <translation>Reanudar ahora</translation>
    </message>
    <message>
        <source>Follow Playlist</source>
        <translation>Seguir la lista</translation>
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
        <translation>1 byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 bytes</translation>
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
        <translation>No se pudo guardar la biblioteca en %1 (%2). Los cambios se conservan y se guardarán la próxima vez.</translation>
    </message>
</context>
<context>
    <name>ConverterView</name>
    <message>
        <source>Converter</source>
        <translation>Convertidor</translation>
    </message>
    <message>
        <source>Rip Audio (%1)</source>
        <translation>Extraer audio (%1)</translation>
    </message>
    <message>
        <source>Rip studio-quality MP3 &amp; audio from YouTube videos</source>
        <translation>Extrae MP3 y audio con calidad de estudio de vídeos de YouTube</translation>
    </message>
    <message>
        <source>YouTube Video Link</source>
        <translation>Enlace del vídeo de YouTube</translation>
    </message>
    <message>
        <source>https://www.youtube.com/watch?v=dQw4w9WgXcQ or https://youtu.be/dQw4w9WgXcQ</source>
        <translation>https://www.youtube.com/watch?v=dQw4w9WgXcQ o https://youtu.be/dQw4w9WgXcQ</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Borrar</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Pegar</translation>
    </message>
    <message>
        <source>New Rip</source>
        <translation>Nueva extracción</translation>
    </message>
    <message>
        <source>Ready (yt-dlp &amp; ffmpeg)</source>
        <translation>Listo (yt-dlp y ffmpeg)</translation>
    </message>
    <message>
        <source>Checking Tools</source>
        <translation>Comprobando herramientas</translation>
    </message>
    <message>
        <source>Extracting Audio...</source>
        <translation>Extrayendo audio...</translation>
    </message>
    <message>
        <source>Update Tools</source>
        <translation>Actualizar herramientas</translation>
    </message>
    <message>
        <source>yt-dlp %1 is out of date</source>
        <translation>yt-dlp %1 está desactualizado</translation>
    </message>
</context>
<context>
    <name>DesktopNotifier</name>
    <message>
        <source>Show</source>
        <translation>Mostrar</translation>
    </message>
    <message>
        <source>Show File</source>
        <translation>Mostrar archivo</translation>
    </message>
</context>
<context>
    <name>DesktopTexts</name>
    <message>
        <source>Show in Folder</source>
        <translation>Mostrar en la carpeta</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Abrir carpeta</translation>
    </message>
    <message>
        <source>Open in Default Player</source>
        <translation>Abrir en el reproductor predeterminado</translation>
    </message>
    <message>
        <source>Veldtone for %1</source>
        <translation>Veldtone para %1</translation>
    </message>
</context>
<context>
    <name>DetailsRefresher</name>
    <message>
        <source>Refreshing details: %1 of %2</source>
        <translation>Actualizando detalles: %1 de %2</translation>
    </message>
</context>
<context>
    <name>DownloadEngine</name>
    <message>
        <source>yt-dlp is missing. Please check Settings.</source>
        <translation>Falta yt-dlp. Revisa los ajustes.</translation>
    </message>
    <message>
        <source>Please enter a valid YouTube URL.</source>
        <translation>Introduce un enlace de YouTube válido.</translation>
    </message>
    <message>
        <source>Extracted Audio</source>
        <translation>Audio extraído</translation>
    </message>
    <message>
        <source>and 1 more track</source>
        <translation>y 1 pista más</translation>
    </message>
    <message>
        <source>and %1 more tracks</source>
        <translation>y %1 pistas más</translation>
    </message>
    <message>
        <source>%1 tracks in &quot;%2&quot;</source>
        <translation>%1 pistas en «%2»</translation>
    </message>
    <message>
        <source>No chapters; ripped as one file.</source>
        <translation>Sin capítulos; extraído en un solo archivo.</translation>
    </message>
</context>
<context>
    <name>ExtractionJob</name>
    <message>
        <source>Cannot write to the folder %1</source>
        <translation>No se puede escribir en la carpeta %1</translation>
    </message>
    <message>
        <source>Download failed with exit code %1</source>
        <translation>La descarga falló con el código de salida %1</translation>
    </message>
    <message>
        <source>yt-dlp could not be started.</source>
        <translation>No se pudo iniciar yt-dlp.</translation>
    </message>
    <message>
        <source>Could not move &quot;%1&quot; into %2: %3</source>
        <translation>No se pudo mover «%1» a %2: %3</translation>
    </message>
    <message>
        <source>(kept in %1)</source>
        <translation>(guardado en %1)</translation>
    </message>
    <message>
        <source>Chapter %1</source>
        <translation>Capítulo %1</translation>
    </message>
    <message>
        <source>Measuring loudness...</source>
        <translation>Midiendo la sonoridad...</translation>
    </message>
</context>
<context>
    <name>FollowService</name>
    <message>
        <source>1 new track from %1</source>
        <translation>1 pista nueva de %1</translation>
    </message>
    <message>
        <source>%1 new tracks from %2</source>
        <translation>%1 pistas nuevas de %2</translation>
    </message>
</context>
<context>
    <name>FollowingView</name>
    <message>
        <source>Following</source>
        <translation>Siguiendo</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>Aún sin comprobar</translation>
    </message>
    <message>
        <source>Checked just now</source>
        <translation>Comprobado ahora mismo</translation>
    </message>
    <message numerus="yes">
        <source>Checked %n minutes ago</source>
        <translation>
            <numerusform>Comprobado hace %n minuto</numerusform>
            <numerusform>Comprobado hace %n minutos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Checked %n hours ago</source>
        <translation>
            <numerusform>Comprobado hace %n hora</numerusform>
            <numerusform>Comprobado hace %n horas</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Checked %n days ago</source>
        <translation>
            <numerusform>Comprobado hace %n día</numerusform>
            <numerusform>Comprobado hace %n días</numerusform>
        </translation>
    </message>
    <message>
        <source>New uploads of the channels and playlists you follow are ripped by themselves, each once.</source>
        <translation>Los vídeos nuevos de los canales y listas que sigue se extraen solos, cada uno una vez.</translation>
    </message>
    <message>
        <source>Check All</source>
        <translation>Comprobar todo</translation>
    </message>
    <message>
        <source>Nothing followed yet. Follow a channel or a playlist: Veldtone looks at it again after it starts and every few hours, and rips each new upload once, as you chose when you followed it.</source>
        <translation>Aún no sigue nada. Siga un canal o una lista: Veldtone vuelve a mirarlo al iniciarse y cada pocas horas, y extrae cada vídeo nuevo una vez, como eligió al seguirlo.</translation>
    </message>
    <message>
        <source>A channel or playlist link</source>
        <translation>Un enlace de canal o de lista</translation>
    </message>
    <message>
        <source>Channel or playlist link</source>
        <translation>Enlace de canal o de lista</translation>
    </message>
    <message>
        <source>Follow</source>
        <translation>Seguir</translation>
    </message>
    <message>
        <source>Also rip the latest</source>
        <translation>Extraer también las últimas</translation>
    </message>
    <message>
        <source>Rip as album</source>
        <translation>Extraer como álbum</translation>
    </message>
    <message>
        <source>That link is followed already, or is not a web link.</source>
        <translation>Ese enlace ya se sigue, o no es un enlace web.</translation>
    </message>
    <message>
        <source>as album</source>
        <translation>como álbum</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>Comprobando…</translation>
    </message>
    <message numerus="yes">
        <source>%n tracks found</source>
        <translation>
            <numerusform>%n pista encontrada</numerusform>
            <numerusform>%n pistas encontradas</numerusform>
        </translation>
    </message>
    <message>
        <source>Format for %1</source>
        <translation>Formato para %1</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Comprobar ahora</translation>
    </message>
    <message>
        <source>Check %1 now</source>
        <translation>Comprobar %1 ahora</translation>
    </message>
    <message>
        <source>Unfollow</source>
        <translation>Dejar de seguir</translation>
    </message>
    <message>
        <source>Unfollow %1</source>
        <translation>Dejar de seguir %1</translation>
    </message>
    <message>
        <source>Unfollow %1?</source>
        <translation>¿Dejar de seguir %1?</translation>
    </message>
    <message>
        <source>New uploads are no longer ripped. The files and library records ripped so far stay.</source>
        <translation>Los vídeos nuevos dejan de extraerse. Los archivos y registros de la biblioteca ya extraídos se quedan.</translation>
    </message>
</context>
<context>
    <name>HistoryStore</name>
    <message>
        <source>a record has a date that cannot be written</source>
        <translation>un registro tiene una fecha que no se puede escribir</translation>
    </message>
    <message>
        <source>the unreadable library file could not be moved aside</source>
        <translation>no se pudo apartar el archivo ilegible de la biblioteca</translation>
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
        <translation>FLAC (sin pérdida)</translation>
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
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Biblioteca</translation>
    </message>
    <message>
        <source>Tracks</source>
        <translation>Pistas</translation>
    </message>
    <message>
        <source>All Formats</source>
        <translation>Todos los formatos</translation>
    </message>
    <message>
        <source>Search tracks...</source>
        <translation>Buscar pistas...</translation>
    </message>
    <message>
        <source>Search tracks</source>
        <translation>Buscar pistas</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Borrar búsqueda</translation>
    </message>
    <message>
        <source>Format filter</source>
        <translation>Filtro de formato</translation>
    </message>
    <message>
        <source>Clear All</source>
        <translation>Borrar todo</translation>
    </message>
    <message>
        <source>Clear all history items</source>
        <translation>Borrar todo el historial</translation>
    </message>
    <message>
        <source>No Ripped Audio Yet</source>
        <translation>Aún no hay audio extraído</translation>
    </message>
    <message>
        <source>Extracted YouTube tracks and MP3s will appear here.</source>
        <translation>Las pistas de YouTube y los MP3 extraídos aparecerán aquí.</translation>
    </message>
    <message>
        <source>No Matching Tracks</source>
        <translation>No hay pistas coincidentes</translation>
    </message>
    <message>
        <source>Try searching with different terms or selecting &apos;All Formats&apos;.</source>
        <translation>Prueba con otros términos o elige «Todos los formatos».</translation>
    </message>
    <message>
        <source>Reset Filters</source>
        <translation>Restablecer filtros</translation>
    </message>
    <message>
        <source>Loading Library…</source>
        <translation>Cargando biblioteca…</translation>
    </message>
    <message>
        <source>Play Track</source>
        <translation>Reproducir pista</translation>
    </message>
    <message>
        <source>Copy File Path</source>
        <translation>Copiar ruta del archivo</translation>
    </message>
    <message>
        <source>Copy YouTube Link</source>
        <translation>Copiar enlace de YouTube</translation>
    </message>
    <message>
        <source>Remove from Library</source>
        <translation>Quitar de la biblioteca</translation>
    </message>
    <message>
        <source>Remove &quot;%1&quot; from your library history?</source>
        <translation>¿Quitar «%1» del historial de tu biblioteca?</translation>
    </message>
    <message>
        <source>Remove track from history?</source>
        <translation>¿Quitar la pista del historial?</translation>
    </message>
    <message>
        <source>Delete Track from Library?</source>
        <translation>¿Eliminar la pista de la biblioteca?</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Quitar</translation>
    </message>
    <message>
        <source>Clear Download History?</source>
        <translation>¿Borrar el historial de descargas?</translation>
    </message>
    <message>
        <source>This will remove all tracks from your library list. Your downloaded audio files will remain in your folders.</source>
        <translation>Se quitarán todas las pistas de la lista de tu biblioteca. Los archivos de audio descargados seguirán en tus carpetas.</translation>
    </message>
    <message>
        <source>Cancel refreshing details</source>
        <translation>Cancelar la actualización de detalles</translation>
    </message>
    <message>
        <source>Library actions</source>
        <translation>Acciones de la biblioteca</translation>
    </message>
    <message>
        <source>Refresh All Details</source>
        <translation>Actualizar todos los detalles</translation>
    </message>
    <message>
        <source>Refresh Details</source>
        <translation>Actualizar detalles</translation>
    </message>
</context>
<context>
    <name>LibraryListModel</name>
    <message>
        <source>%1, Playing</source>
        <translation>%1, reproduciendo</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Archivo</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Salir</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Reproducción</translation>
    </message>
    <message>
        <source>Play / Pause</source>
        <translation>Reproducir / Pausa</translation>
    </message>
    <message>
        <source>Stop Playback</source>
        <translation>Detener reproducción</translation>
    </message>
    <message>
        <source>A Rip Is Running</source>
        <translation>Hay una extracción en curso</translation>
    </message>
    <message>
        <source>Stop the running rip and quit?</source>
        <translation>¿Detener la extracción en curso y salir?</translation>
    </message>
    <message>
        <source>Stop and Quit</source>
        <translation>Detener y salir</translation>
    </message>
    <message>
        <source>Rip finished</source>
        <translation>Extracción terminada</translation>
    </message>
    <message>
        <source>Batch finished: %1</source>
        <translation>Lote terminado: %1</translation>
    </message>
    <message>
        <source>Rips Are Running</source>
        <translation>Hay extracciones en curso</translation>
    </message>
    <message>
        <source>Stop %1 rips and quit?</source>
        <translation>¿Detener %1 extracciones y salir?</translation>
    </message>
    <message>
        <source>Rip failed: %1</source>
        <translation>Falló la extracción: %1</translation>
    </message>
    <message>
        <source>Not a link</source>
        <translation>No es un enlace</translation>
    </message>
    <message>
        <source>Veldtone rips from links to videos; drop a link from a browser, not a file.</source>
        <translation>Veldtone extrae desde enlaces a vídeos; suelte un enlace desde el navegador, no un archivo.</translation>
    </message>
</context>
<context>
    <name>MetadataFetch</name>
    <message>
        <source>Unknown Title</source>
        <translation>Título desconocido</translation>
    </message>
    <message>
        <source>Unknown Artist</source>
        <translation>Artista desconocido</translation>
    </message>
    <message>
        <source>yt-dlp could not be started.</source>
        <translation>No se pudo iniciar yt-dlp.</translation>
    </message>
    <message>
        <source>yt-dlp stopped answering.</source>
        <translation>yt-dlp dejó de responder.</translation>
    </message>
</context>
<context>
    <name>MiniPlayerView</name>
    <message>
        <source>Play</source>
        <translation>Reproducir</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Close Player</source>
        <translation>Cerrar reproductor</translation>
    </message>
    <message>
        <source>Mini Player</source>
        <translation>Minirreproductor</translation>
    </message>
    <message>
        <source>Playback Position</source>
        <translation>Posición de reproducción</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volumen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausa</translation>
    </message>
    <message>
        <source>Previous Track</source>
        <translation>Pista anterior</translation>
    </message>
    <message>
        <source>Next Track</source>
        <translation>Pista siguiente</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
</context>
<context>
    <name>MissingToolsCard</name>
    <message>
        <source>Tools Missing (yt-dlp or ffmpeg)</source>
        <translation>Faltan herramientas (yt-dlp o ffmpeg)</translation>
    </message>
    <message>
        <source>Install Automatically</source>
        <translation>Instalar automáticamente</translation>
    </message>
    <message>
        <source>Veldtone can automatically download and set up yt-dlp &amp; ffmpeg for you.</source>
        <translation>Veldtone puede descargar y configurar yt-dlp y ffmpeg automáticamente por ti.</translation>
    </message>
</context>
<context>
    <name>Navigation</name>
    <message>
        <source>Convert</source>
        <translation>Convertir</translation>
    </message>
    <message>
        <source>Batch</source>
        <translation>Lote</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Biblioteca</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Following</source>
        <translation>Siguiendo</translation>
    </message>
</context>
<context>
    <name>OutputOptionsForm</name>
    <message>
        <source>Destination Folder</source>
        <translation>Carpeta de destino</translation>
    </message>
    <message>
        <source>Default Download Folder</source>
        <translation>Carpeta de descargas predeterminada</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>Elegir...</translation>
    </message>
    <message>
        <source>Change...</source>
        <translation>Cambiar...</translation>
    </message>
    <message>
        <source>Audio Format</source>
        <translation>Formato de audio</translation>
    </message>
    <message>
        <source>Default Format</source>
        <translation>Formato predeterminado</translation>
    </message>
    <message>
        <source>Audio Quality</source>
        <translation>Calidad de audio</translation>
    </message>
    <message>
        <source>Default Bitrate</source>
        <translation>Tasa de bits predeterminada</translation>
    </message>
    <message>
        <source>Lossless / Best Stream</source>
        <translation>Sin pérdida / mejor flujo</translation>
    </message>
    <message>
        <source>Embed Album Artwork</source>
        <translation>Incrustar carátula</translation>
    </message>
    <message>
        <source>Embed ID3 Tags</source>
        <translation>Incrustar etiquetas ID3</translation>
    </message>
    <message>
        <source>Always embed YouTube thumbnail as album cover artwork</source>
        <translation>Incrustar siempre la miniatura de YouTube como carátula del álbum</translation>
    </message>
    <message>
        <source>Always embed ID3 audio tags (Title, Artist, Channel, Album)</source>
        <translation>Incrustar siempre etiquetas ID3 (título, artista, canal, álbum)</translation>
    </message>
    <message>
        <source>Select Download Folder</source>
        <translation>Seleccionar carpeta de descargas</translation>
    </message>
    <message>
        <source>Square cover art</source>
        <translation>Portada cuadrada</translation>
    </message>
    <message>
        <source>Split by chapters</source>
        <translation>Dividir por capítulos</translation>
    </message>
</context>
<context>
    <name>PlaylistListing</name>
    <message>
        <source>yt-dlp could not be started.</source>
        <translation>No se pudo iniciar yt-dlp.</translation>
    </message>
    <message>
        <source>Could not list the playlist: %1</source>
        <translation>No se pudo listar la lista: %1</translation>
    </message>
    <message>
        <source>The playlist has no tracks.</source>
        <translation>La lista no tiene pistas.</translation>
    </message>
</context>
<context>
    <name>PlaylistOfferCard</name>
    <message>
        <source>This link is a playlist.</source>
        <translation>Este enlace es una lista de reproducción.</translation>
    </message>
    <message>
        <source>Rip as album</source>
        <translation>Extraer como álbum</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Cancel Listing</source>
        <translation>Cancelar el listado</translation>
    </message>
    <message>
        <source>Follow</source>
        <translation>Seguir</translation>
    </message>
    <message numerus="yes">
        <source>Rip all %n tracks in Batch</source>
        <translation>
            <numerusform>Extraer %n pista en el lote</numerusform>
            <numerusform>Extraer las %n pistas en el lote</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RipFailureCard</name>
    <message>
        <source>Extraction Failed</source>
        <translation>Error en la extracción</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Update Tools</source>
        <translation>Actualizar herramientas</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Abrir ajustes</translation>
    </message>
</context>
<context>
    <name>RipProgressCard</name>
    <message>
        <source>Downloading Audio...</source>
        <translation>Descargando audio...</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Progreso de la descarga</translation>
    </message>
    <message>
        <source>Cancel Download</source>
        <translation>Cancelar descarga</translation>
    </message>
    <message>
        <source>ETA: %1</source>
        <translation>Restante: %1</translation>
    </message>
</context>
<context>
    <name>RipSuccessCard</name>
    <message>
        <source>Extraction Complete!</source>
        <translation>¡Extracción completada!</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproducir</translation>
    </message>
    <message>
        <source>Queue the whole playlist</source>
        <translation>Poner en cola toda la lista</translation>
    </message>
    <message>
        <source>Playing; press to pause</source>
        <translation>Reproduciendo; pulsa para pausar</translation>
    </message>
    <message>
        <source>Press to play</source>
        <translation>Pulsa para reproducir</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Preferencias</translation>
    </message>
    <message>
        <source>General Defaults</source>
        <translation>Valores predeterminados</translation>
    </message>
    <message>
        <source>Engine &amp; CLI Tools</source>
        <translation>Motor y herramientas de línea de órdenes</translation>
    </message>
    <message>
        <source>Check Dependencies</source>
        <translation>Comprobar dependencias</translation>
    </message>
    <message>
        <source>Download &amp; Install Missing Tools Automatically</source>
        <translation>Descargar e instalar automáticamente las herramientas que faltan</translation>
    </message>
    <message>
        <source>Version %1 (Native Qt %2 Widgets)</source>
        <translation>Versión %1 (widgets nativos de Qt %2)</translation>
    </message>
    <message>
        <source>Use cookies from</source>
        <translation>Usar cookies de</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Ninguno</translation>
    </message>
    <message>
        <source>Update yt-dlp</source>
        <translation>Actualizar yt-dlp</translation>
    </message>
    <message>
        <source>Use previous version</source>
        <translation>Usar la versión anterior</translation>
    </message>
    <message>
        <source>JavaScript runtime</source>
        <translation>Entorno de JavaScript</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Instalar</translation>
    </message>
    <message>
        <source>Install Deno</source>
        <translation>Instalar Deno</translation>
    </message>
    <message>
        <source>Check for tool updates automatically</source>
        <translation>Buscar actualizaciones de herramientas automáticamente</translation>
    </message>
    <message>
        <source>Needs Deno 2.3 or later</source>
        <translation>Necesita Deno 2.3 o posterior</translation>
    </message>
    <message>
        <source>YouTube needs it for most videos</source>
        <translation>YouTube lo necesita para la mayoría de los vídeos</translation>
    </message>
    <message>
        <source>Simultaneous rips</source>
        <translation>Extracciones simultáneas</translation>
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
        <translation>Sin límite</translation>
    </message>
    <message>
        <source>Download speed limit</source>
        <translation>Límite de velocidad de descarga</translation>
    </message>
    <message>
        <source>Not saved: a proxy is an http, https, socks4, socks4a, socks5 or socks5h link, such as socks5://127.0.0.1:1080.</source>
        <translation>No guardado: un proxy es un enlace http, https, socks4, socks4a, socks5 o socks5h, como socks5://127.0.0.1:1080.</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Música</translation>
    </message>
    <message>
        <source>Square cover art</source>
        <translation>Portada cuadrada</translation>
    </message>
    <message>
        <source>Read artist from titles</source>
        <translation>Leer el artista de los títulos</translation>
    </message>
    <message>
        <source>A title such as &quot;Artist - Song (Official Video)&quot; gives the artist and the song when the site names neither.</source>
        <translation>Un título como «Artista - Canción (Official Video)» da el artista y la canción cuando el sitio no los nombra.</translation>
    </message>
    <message>
        <source>Loudness tags</source>
        <translation>Etiquetas de sonoridad</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Reproducción</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Desactivado</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Pista</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Álbum</translation>
    </message>
    <message>
        <source>Even out loudness</source>
        <translation>Igualar la sonoridad</translation>
    </message>
    <message>
        <source>Stable</source>
        <translation>Estable</translation>
    </message>
    <message>
        <source>Nightly</source>
        <translation>Nightly</translation>
    </message>
    <message>
        <source>yt-dlp updates</source>
        <translation>Actualizaciones de yt-dlp</translation>
    </message>
    <message>
        <source>Installed by Veldtone · signature verified</source>
        <translation>Instalado por Veldtone · firma verificada</translation>
    </message>
    <message>
        <source>Installed by Veldtone · checksum verified</source>
        <translation>Instalado por Veldtone · suma de comprobación verificada</translation>
    </message>
    <message>
        <source>Shipped with Veldtone</source>
        <translation>Incluido con Veldtone</translation>
    </message>
    <message>
        <source>System package</source>
        <translation>Paquete del sistema</translation>
    </message>
    <message>
        <source>Found on PATH</source>
        <translation>Encontrado en el PATH</translation>
    </message>
    <message>
        <source>Install Veldtone&apos;s Copy</source>
        <translation>Instalar la copia de Veldtone</translation>
    </message>
    <message>
        <source>Switch to Nightly</source>
        <translation>Cambiar a Nightly</translation>
    </message>
    <message>
        <source>Switch to Stable</source>
        <translation>Cambiar a Estable</translation>
    </message>
    <message>
        <source>Pause between rips in long batches</source>
        <translation>Pausar entre extracciones en lotes largos</translation>
    </message>
    <message>
        <source>Every hour</source>
        <translation>Cada hora</translation>
    </message>
    <message>
        <source>Every 6 hours</source>
        <translation>Cada 6 horas</translation>
    </message>
    <message>
        <source>Every day</source>
        <translation>Cada día</translation>
    </message>
    <message>
        <source>Only when asked</source>
        <translation>Solo cuando se pida</translation>
    </message>
    <message>
        <source>Check followed links</source>
        <translation>Comprobar los enlaces seguidos</translation>
    </message>
    <message>
        <source>Continue with the next track</source>
        <translation>Continuar con la siguiente pista</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Sidebar</source>
        <translation>Barra lateral</translation>
    </message>
</context>
<context>
    <name>SidebarRow</name>
    <message numerus="yes">
        <source>%n tracks</source>
        <translation>
            <numerusform>%n pista</numerusform>
            <numerusform>%n pistas</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n rips waiting</source>
        <translation>
            <numerusform>%n extracción en espera</numerusform>
            <numerusform>%n extracciones en espera</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ToolAdvice</name>
    <message>
        <source>The site wants a signed-in browser. Choose one under &quot;Use cookies from&quot; in Settings.</source>
        <translation>El sitio pide un navegador con sesión iniciada. Elígelo en &quot;Usar cookies de&quot; en Ajustes.</translation>
    </message>
    <message>
        <source>yt-dlp may be too old for this site, or lack its JavaScript runtime.</source>
        <translation>Puede que yt-dlp sea demasiado antiguo para este sitio o que le falte su entorno de JavaScript.</translation>
    </message>
</context>
<context>
    <name>ToolOutputReader</name>
    <message>
        <source>Converting audio to %1 (%2)...</source>
        <translation>Convirtiendo el audio a %1 (%2)...</translation>
    </message>
    <message>
        <source>Embedding album artwork...</source>
        <translation>Incrustando la carátula...</translation>
    </message>
    <message>
        <source>Embedding audio tags...</source>
        <translation>Incrustando etiquetas de audio...</translation>
    </message>
    <message>
        <source>Unknown extraction error</source>
        <translation>Error de extracción desconocido</translation>
    </message>
</context>
<context>
    <name>ToolStatusRow</name>
    <message>
        <source>Found</source>
        <translation>Encontrado</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>No encontrado</translation>
    </message>
    <message>
        <source>Not found in standard paths</source>
        <translation>No se encuentra en las rutas estándar</translation>
    </message>
    <message>
        <source>%1: found</source>
        <translation>%1: encontrado</translation>
    </message>
    <message>
        <source>%1: missing</source>
        <translation>%1: no encontrado</translation>
    </message>
    <message>
        <source>%1, version %2</source>
        <translation>%1, versión %2</translation>
    </message>
</context>
<context>
    <name>ToolUpdater</name>
    <message>
        <source>Update available: %1</source>
        <translation>Actualización disponible: %1</translation>
    </message>
    <message>
        <source>Out of date</source>
        <translation>Desactualizado</translation>
    </message>
    <message>
        <source>Looking for the latest %1...</source>
        <translation>Buscando la última versión de %1...</translation>
    </message>
    <message>
        <source>Could not reach the %1 releases.</source>
        <translation>No se pudo acceder a las versiones de %1.</translation>
    </message>
    <message>
        <source>%1 %2 is the latest.</source>
        <translation>%1 %2 es la última versión.</translation>
    </message>
    <message>
        <source>Downloading %1 %2...</source>
        <translation>Descargando %1 %2...</translation>
    </message>
    <message>
        <source>Could not download %1.</source>
        <translation>No se pudo descargar %1.</translation>
    </message>
    <message>
        <source>The downloaded %1 does not match its published checksum; nothing was replaced.</source>
        <translation>El %1 descargado no coincide con su suma de comprobación publicada; no se reemplazó nada.</translation>
    </message>
    <message>
        <source>%1 %2 installed.</source>
        <translation>%1 %2 instalado.</translation>
    </message>
    <message>
        <source>Could not put %1 into %2.</source>
        <translation>No se pudo colocar %1 en %2.</translation>
    </message>
    <message>
        <source>There is no %1 build for this machine.</source>
        <translation>No hay %1 para este equipo.</translation>
    </message>
    <message>
        <source>Downloading %1...</source>
        <translation>Descargando %1...</translation>
    </message>
    <message>
        <source>Could not download the checksums of %1.</source>
        <translation>No se pudieron descargar las sumas de comprobación de %1.</translation>
    </message>
    <message>
        <source>Verifying and installing %1...</source>
        <translation>Verificando e instalando %1...</translation>
    </message>
    <message>
        <source>Verifying and installing %1 %2...</source>
        <translation>Verificando e instalando %1 %2...</translation>
    </message>
    <message>
        <source>%1 installed.</source>
        <translation>%1 instalado.</translation>
    </message>
    <message>
        <source>The %1 release is not signed by its maintainers&apos; key; nothing was replaced.</source>
        <translation>La versión de %1 no está firmada con la clave de sus responsables; no se reemplazó nada.</translation>
    </message>
    <message>
        <source>The downloaded %1 could not be unpacked; nothing was replaced.</source>
        <translation>No se pudo descomprimir el %1 descargado; no se reemplazó nada.</translation>
    </message>
    <message>
        <source>The new %1 did not run; nothing was replaced.</source>
        <translation>El nuevo %1 no se ejecutó; no se reemplazó nada.</translation>
    </message>
</context>
<context>
    <name>TrackDelegate</name>
    <message>
        <source>Remove from library</source>
        <translation>Quitar de la biblioteca</translation>
    </message>
</context>
<context>
    <name>TrackListView</name>
    <message>
        <source>Play</source>
        <translation>Reproducir</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausa</translation>
    </message>
    <message>
        <source>Remove from Library</source>
        <translation>Quitar de la biblioteca</translation>
    </message>
</context>
</TS>
