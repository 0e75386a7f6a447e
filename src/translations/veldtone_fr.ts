<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR" sourcelanguage="en">
<context>
    <name>ActivitySpinner</name>
    <message>
        <source>In progress</source>
        <translation>En cours</translation>
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
        <translation>FLAC sans perte (.flac)</translation>
    </message>
    <message>
        <source>WAV Uncompressed (.wav)</source>
        <translation>WAV non compressé (.wav)</translation>
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
        <translation>320 kb/s (qualité maximale)</translation>
    </message>
    <message>
        <source>320 kbps</source>
        <translation>320 kb/s</translation>
    </message>
    <message>
        <source>256 kbps (High Quality)</source>
        <translation>256 kb/s (haute qualité)</translation>
    </message>
    <message>
        <source>256 kbps</source>
        <translation>256 kb/s</translation>
    </message>
    <message>
        <source>192 kbps (Standard)</source>
        <translation>192 kb/s (standard)</translation>
    </message>
    <message>
        <source>192 kbps</source>
        <translation>192 kb/s</translation>
    </message>
    <message>
        <source>128 kbps (Compact)</source>
        <translation>128 kb/s (compact)</translation>
    </message>
    <message>
        <source>128 kbps</source>
        <translation>128 kb/s</translation>
    </message>
    <message>
        <source>Best Available (Original)</source>
        <translation>Meilleure disponible (originale)</translation>
    </message>
    <message>
        <source>Best (Auto)</source>
        <translation>Meilleure (auto)</translation>
    </message>
</context>
<context>
    <name>BatchQueueModel</name>
    <message>
        <source>Waiting</source>
        <translation>En attente</translation>
    </message>
    <message>
        <source>Downloading %1%</source>
        <translation>Téléchargement&#xa0;%1&#xa0;%</translation>
    </message>
    <message>
        <source>Converting...</source>
        <translation>Conversion...</translation>
    </message>
    <message>
        <source>Completed</source>
        <translation>Terminé</translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation>Échec&#xa0;:&#xa0;%1</translation>
    </message>
    <message>
        <source>Already in Library</source>
        <translation>Déjà dans la bibliothèque</translation>
    </message>
</context>
<context>
    <name>BatchRunner</name>
    <message>
        <source>%1 of %2 completed</source>
        <translation>%1 sur&#xa0;%2 terminés</translation>
    </message>
    <message>
        <source>%1, %2 skipped</source>
        <translation>%1, %2 ignoré(s)</translation>
    </message>
    <message>
        <source>Expanding playlist… %1</source>
        <translation>Développement de la playlist… %1</translation>
    </message>
    <message>
        <source>%1, %2 failed</source>
        <translation>%1, %2 en échec</translation>
    </message>
    <message numerus="yes">
        <source>YouTube is limiting requests; the batch waits %n minutes before it goes on.</source>
        <translation>
            <numerusform>YouTube limite les requêtes ; le lot attend %n minute avant de reprendre.</numerusform>
            <numerusform>YouTube limite les requêtes ; le lot attend %n minutes avant de reprendre.</numerusform>
        </translation>
    </message>
    <message>
        <source>The saved queue could not be read; it was kept aside and the queue starts empty.</source>
        <translation>La file enregistrée est illisible ; elle a été mise de côté et la file repart vide.</translation>
    </message>
    <message>
        <source>1 rip was waiting when Veldtone closed.</source>
        <translation>1 extraction attendait à la fermeture de Veldtone.</translation>
    </message>
    <message numerus="yes">
        <source>%n rips were waiting when Veldtone closed.</source>
        <translation>
            <numerusform>%n extraction attendait à la fermeture de Veldtone.</numerusform>
            <numerusform>%n extractions attendaient à la fermeture de Veldtone.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BatchView</name>
    <message>
        <source>Batch</source>
        <translation>Lot</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>File d&apos;attente</translation>
    </message>
    <message>
        <source>Batch Audio Ripper</source>
        <translation>Extraction audio par lot</translation>
    </message>
    <message>
        <source>Paste multiple YouTube links to rip all audio at once</source>
        <translation>Collez plusieurs liens YouTube pour extraire tout l&apos;audio d&apos;un coup</translation>
    </message>
    <message>
        <source>Clear Queue</source>
        <translation>Vider la file</translation>
    </message>
    <message>
        <source>Enter YouTube links (one per line):</source>
        <translation>Saisissez des liens YouTube (un par ligne)&#xa0;:</translation>
    </message>
    <message>
        <source>YouTube links, one per line</source>
        <translation>Liens YouTube, un par ligne</translation>
    </message>
    <message>
        <source>Paste Clipboard</source>
        <translation>Coller depuis le presse-papiers</translation>
    </message>
    <message>
        <source>Add to Queue</source>
        <translation>Ajouter à la file</translation>
    </message>
    <message>
        <source>Stop Batch</source>
        <translation>Arrêter le lot</translation>
    </message>
    <message>
        <source>Add More URLs</source>
        <translation>Ajouter d&apos;autres liens</translation>
    </message>
    <message numerus="yes">
        <source>Rip All (%n Tracks)</source>
        <translation>
            <numerusform>Tout extraire (%n piste)</numerusform>
            <numerusform>Tout extraire (%n pistes)</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Retirer</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Rip Again</source>
        <translation>Extraire à nouveau</translation>
    </message>
    <message>
        <source>Retry Failed</source>
        <translation>Réessayer les échecs</translation>
    </message>
    <message>
        <source>Rip playlists as albums</source>
        <translation>Extraire les playlists comme albums</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reprendre</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Vider</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Masquer</translation>
    </message>
    <message>
        <source>Resume now</source>
        <translation>Reprendre maintenant</translation>
    </message>
    <message>
        <source>Follow Playlist</source>
        <translation>Suivre la playlist</translation>
    </message>
</context>
<context>
    <name>ByteCount</name>
    <message>
        <source>%1 KB</source>
        <translation>%1 Ko</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 Mo</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 Go</translation>
    </message>
    <message>
        <source>%1 TB</source>
        <translation>%1 To</translation>
    </message>
    <message>
        <source>%1 PB</source>
        <translation>%1 Po</translation>
    </message>
    <message>
        <source>%1 EB</source>
        <translation>%1 Eo</translation>
    </message>
    <message>
        <source>Zero KB</source>
        <translation>0 Ko</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 octet</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 octets</translation>
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
        <translation>La bibliothèque n&apos;a pas pu être enregistrée dans&#xa0;%1 (%2). Les modifications sont conservées et seront enregistrées la prochaine fois.</translation>
    </message>
</context>
<context>
    <name>ConverterView</name>
    <message>
        <source>Converter</source>
        <translation>Convertisseur</translation>
    </message>
    <message>
        <source>Rip Audio (%1)</source>
        <translation>Extraire l&apos;audio (%1)</translation>
    </message>
    <message>
        <source>Rip studio-quality MP3 &amp; audio from YouTube videos</source>
        <translation>Extrayez des MP3 et de l&apos;audio en qualité studio depuis des vidéos YouTube</translation>
    </message>
    <message>
        <source>YouTube Video Link</source>
        <translation>Lien de la vidéo YouTube</translation>
    </message>
    <message>
        <source>https://www.youtube.com/watch?v=dQw4w9WgXcQ or https://youtu.be/dQw4w9WgXcQ</source>
        <translation>https://www.youtube.com/watch?v=dQw4w9WgXcQ ou https://youtu.be/dQw4w9WgXcQ</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Effacer</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Coller</translation>
    </message>
    <message>
        <source>New Rip</source>
        <translation>Nouvelle extraction</translation>
    </message>
    <message>
        <source>Ready (yt-dlp &amp; ffmpeg)</source>
        <translation>Prêt (yt-dlp et ffmpeg)</translation>
    </message>
    <message>
        <source>Checking Tools</source>
        <translation>Vérification des outils</translation>
    </message>
    <message>
        <source>Extracting Audio...</source>
        <translation>Extraction de l&apos;audio...</translation>
    </message>
    <message>
        <source>Update Tools</source>
        <translation>Mettre à jour les outils</translation>
    </message>
    <message>
        <source>yt-dlp %1 is out of date</source>
        <translation>yt-dlp %1 est obsolète</translation>
    </message>
</context>
<context>
    <name>DesktopNotifier</name>
    <message>
        <source>Show</source>
        <translation>Afficher</translation>
    </message>
    <message>
        <source>Show File</source>
        <translation>Afficher le fichier</translation>
    </message>
</context>
<context>
    <name>DesktopTexts</name>
    <message>
        <source>Show in Folder</source>
        <translation>Afficher dans le dossier</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Ouvrir le dossier</translation>
    </message>
    <message>
        <source>Open in Default Player</source>
        <translation>Ouvrir dans le lecteur par défaut</translation>
    </message>
    <message>
        <source>Veldtone for %1</source>
        <translation>Veldtone pour&#xa0;%1</translation>
    </message>
</context>
<context>
    <name>DetailsRefresher</name>
    <message>
        <source>Refreshing details: %1 of %2</source>
        <translation>Actualisation des détails : %1 sur %2</translation>
    </message>
</context>
<context>
    <name>DownloadEngine</name>
    <message>
        <source>yt-dlp is missing. Please check Settings.</source>
        <translation>yt-dlp est introuvable. Vérifiez les paramètres.</translation>
    </message>
    <message>
        <source>Please enter a valid YouTube URL.</source>
        <translation>Veuillez saisir un lien YouTube valide.</translation>
    </message>
    <message>
        <source>Extracted Audio</source>
        <translation>Audio extrait</translation>
    </message>
    <message>
        <source>and 1 more track</source>
        <translation>et 1 autre piste</translation>
    </message>
    <message>
        <source>and %1 more tracks</source>
        <translation>et %1 autres pistes</translation>
    </message>
    <message>
        <source>%1 tracks in &quot;%2&quot;</source>
        <translation>%1 pistes dans « %2 »</translation>
    </message>
    <message>
        <source>No chapters; ripped as one file.</source>
        <translation>Aucun chapitre ; extrait en un seul fichier.</translation>
    </message>
</context>
<context>
    <name>ExtractionJob</name>
    <message>
        <source>Cannot write to the folder %1</source>
        <translation>Impossible d&apos;écrire dans le dossier&#xa0;%1</translation>
    </message>
    <message>
        <source>Download failed with exit code %1</source>
        <translation>Le téléchargement a échoué avec le code de sortie&#xa0;%1</translation>
    </message>
    <message>
        <source>yt-dlp could not be started.</source>
        <translation>yt-dlp n’a pas pu être lancé.</translation>
    </message>
    <message>
        <source>Could not move &quot;%1&quot; into %2: %3</source>
        <translation>Impossible de déplacer « %1 » dans %2 : %3</translation>
    </message>
    <message>
        <source>(kept in %1)</source>
        <translation>(conservé dans %1)</translation>
    </message>
    <message>
        <source>Chapter %1</source>
        <translation>Chapitre %1</translation>
    </message>
    <message>
        <source>Measuring loudness...</source>
        <translation>Mesure de la sonie...</translation>
    </message>
</context>
<context>
    <name>FollowService</name>
    <message>
        <source>1 new track from %1</source>
        <translation>1 nouvelle piste de %1</translation>
    </message>
    <message>
        <source>%1 new tracks from %2</source>
        <translation>%1 nouvelles pistes de %2</translation>
    </message>
</context>
<context>
    <name>FollowingView</name>
    <message>
        <source>Following</source>
        <translation>Abonnements</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>Pas encore vérifié</translation>
    </message>
    <message>
        <source>Checked just now</source>
        <translation>Vérifié à l&apos;instant</translation>
    </message>
    <message numerus="yes">
        <source>Checked %n minutes ago</source>
        <translation>
            <numerusform>Vérifié il y a %n minute</numerusform>
            <numerusform>Vérifié il y a %n minutes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Checked %n hours ago</source>
        <translation>
            <numerusform>Vérifié il y a %n heure</numerusform>
            <numerusform>Vérifié il y a %n heures</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Checked %n days ago</source>
        <translation>
            <numerusform>Vérifié il y a %n jour</numerusform>
            <numerusform>Vérifié il y a %n jours</numerusform>
        </translation>
    </message>
    <message>
        <source>New uploads of the channels and playlists you follow are ripped by themselves, each once.</source>
        <translation>Les nouvelles vidéos des chaînes et playlists suivies sont extraites d&apos;elles-mêmes, chacune une fois.</translation>
    </message>
    <message>
        <source>Check All</source>
        <translation>Tout vérifier</translation>
    </message>
    <message>
        <source>Nothing followed yet. Follow a channel or a playlist: Veldtone looks at it again after it starts and every few hours, and rips each new upload once, as you chose when you followed it.</source>
        <translation>Rien n&apos;est encore suivi. Suivez une chaîne ou une playlist : Veldtone y retourne après son démarrage et toutes les quelques heures, et extrait chaque nouvelle vidéo une fois, comme choisi au moment de la suivre.</translation>
    </message>
    <message>
        <source>A channel or playlist link</source>
        <translation>Un lien de chaîne ou de playlist</translation>
    </message>
    <message>
        <source>Channel or playlist link</source>
        <translation>Lien de chaîne ou de playlist</translation>
    </message>
    <message>
        <source>Follow</source>
        <translation>Suivre</translation>
    </message>
    <message>
        <source>Also rip the latest</source>
        <translation>Extraire aussi les dernières</translation>
    </message>
    <message>
        <source>Rip as album</source>
        <translation>Extraire comme album</translation>
    </message>
    <message>
        <source>That link is followed already, or is not a web link.</source>
        <translation>Ce lien est déjà suivi, ou n&apos;est pas un lien web.</translation>
    </message>
    <message>
        <source>as album</source>
        <translation>comme album</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>Vérification…</translation>
    </message>
    <message numerus="yes">
        <source>%n tracks found</source>
        <translation>
            <numerusform>%n piste trouvée</numerusform>
            <numerusform>%n pistes trouvées</numerusform>
        </translation>
    </message>
    <message>
        <source>Format for %1</source>
        <translation>Format pour %1</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Vérifier maintenant</translation>
    </message>
    <message>
        <source>Check %1 now</source>
        <translation>Vérifier %1 maintenant</translation>
    </message>
    <message>
        <source>Unfollow</source>
        <translation>Ne plus suivre</translation>
    </message>
    <message>
        <source>Unfollow %1</source>
        <translation>Ne plus suivre %1</translation>
    </message>
    <message>
        <source>Unfollow %1?</source>
        <translation>Ne plus suivre %1 ?</translation>
    </message>
    <message>
        <source>New uploads are no longer ripped. The files and library records ripped so far stay.</source>
        <translation>Les nouvelles vidéos ne sont plus extraites. Les fichiers et les entrées de bibliothèque déjà extraits restent.</translation>
    </message>
</context>
<context>
    <name>HistoryStore</name>
    <message>
        <source>a record has a date that cannot be written</source>
        <translation>un enregistrement a une date qui ne peut pas être écrite</translation>
    </message>
    <message>
        <source>the unreadable library file could not be moved aside</source>
        <translation>le fichier de bibliothèque illisible n&apos;a pas pu être mis de côté</translation>
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
        <translation>FLAC (sans perte)</translation>
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
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothèque</translation>
    </message>
    <message>
        <source>Tracks</source>
        <translation>Pistes</translation>
    </message>
    <message>
        <source>All Formats</source>
        <translation>Tous les formats</translation>
    </message>
    <message>
        <source>Search tracks...</source>
        <translation>Rechercher des pistes...</translation>
    </message>
    <message>
        <source>Search tracks</source>
        <translation>Rechercher des pistes</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Effacer la recherche</translation>
    </message>
    <message>
        <source>Format filter</source>
        <translation>Filtre de format</translation>
    </message>
    <message>
        <source>Clear All</source>
        <translation>Tout effacer</translation>
    </message>
    <message>
        <source>Clear all history items</source>
        <translation>Effacer tout l&apos;historique</translation>
    </message>
    <message>
        <source>No Ripped Audio Yet</source>
        <translation>Aucun audio extrait pour le moment</translation>
    </message>
    <message>
        <source>Extracted YouTube tracks and MP3s will appear here.</source>
        <translation>Les pistes YouTube et MP3 extraits apparaîtront ici.</translation>
    </message>
    <message>
        <source>No Matching Tracks</source>
        <translation>Aucune piste correspondante</translation>
    </message>
    <message>
        <source>Try searching with different terms or selecting &apos;All Formats&apos;.</source>
        <translation>Essayez d&apos;autres termes ou choisissez «&#xa0;Tous les formats&#xa0;».</translation>
    </message>
    <message>
        <source>Reset Filters</source>
        <translation>Réinitialiser les filtres</translation>
    </message>
    <message>
        <source>Loading Library…</source>
        <translation>Chargement de la bibliothèque…</translation>
    </message>
    <message>
        <source>Play Track</source>
        <translation>Lire la piste</translation>
    </message>
    <message>
        <source>Copy File Path</source>
        <translation>Copier le chemin du fichier</translation>
    </message>
    <message>
        <source>Copy YouTube Link</source>
        <translation>Copier le lien YouTube</translation>
    </message>
    <message>
        <source>Remove from Library</source>
        <translation>Retirer de la bibliothèque</translation>
    </message>
    <message>
        <source>Remove &quot;%1&quot; from your library history?</source>
        <translation>Retirer «&#xa0;%1&#xa0;» de l&apos;historique de votre bibliothèque&#xa0;?</translation>
    </message>
    <message>
        <source>Remove track from history?</source>
        <translation>Retirer la piste de l&apos;historique&#xa0;?</translation>
    </message>
    <message>
        <source>Delete Track from Library?</source>
        <translation>Supprimer la piste de la bibliothèque&#xa0;?</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Retirer</translation>
    </message>
    <message>
        <source>Clear Download History?</source>
        <translation>Effacer l&apos;historique des téléchargements&#xa0;?</translation>
    </message>
    <message>
        <source>This will remove all tracks from your library list. Your downloaded audio files will remain in your folders.</source>
        <translation>Toutes les pistes seront retirées de la liste de votre bibliothèque. Vos fichiers audio téléchargés resteront dans vos dossiers.</translation>
    </message>
    <message>
        <source>Cancel refreshing details</source>
        <translation>Annuler l’actualisation des détails</translation>
    </message>
    <message>
        <source>Library actions</source>
        <translation>Actions de la bibliothèque</translation>
    </message>
    <message>
        <source>Refresh All Details</source>
        <translation>Actualiser tous les détails</translation>
    </message>
    <message>
        <source>Refresh Details</source>
        <translation>Actualiser les détails</translation>
    </message>
</context>
<context>
    <name>LibraryListModel</name>
    <message>
        <source>%1, Playing</source>
        <translation>%1, en lecture</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Lecture</translation>
    </message>
    <message>
        <source>Play / Pause</source>
        <translation>Lecture / Pause</translation>
    </message>
    <message>
        <source>Stop Playback</source>
        <translation>Arrêter la lecture</translation>
    </message>
    <message>
        <source>A Rip Is Running</source>
        <translation>Une extraction est en cours</translation>
    </message>
    <message>
        <source>Stop the running rip and quit?</source>
        <translation>Arrêter l’extraction en cours et quitter ?</translation>
    </message>
    <message>
        <source>Stop and Quit</source>
        <translation>Arrêter et quitter</translation>
    </message>
    <message>
        <source>Rip finished</source>
        <translation>Extraction terminée</translation>
    </message>
    <message>
        <source>Batch finished: %1</source>
        <translation>Lot terminé : %1</translation>
    </message>
    <message>
        <source>Rips Are Running</source>
        <translation>Des extractions sont en cours</translation>
    </message>
    <message>
        <source>Stop %1 rips and quit?</source>
        <translation>Arrêter %1 extractions et quitter ?</translation>
    </message>
    <message>
        <source>Rip failed: %1</source>
        <translation>Échec de l&apos;extraction : %1</translation>
    </message>
    <message>
        <source>Not a link</source>
        <translation>Pas un lien</translation>
    </message>
    <message>
        <source>Veldtone rips from links to videos; drop a link from a browser, not a file.</source>
        <translation>Veldtone extrait depuis des liens vers des vidéos ; déposez un lien depuis un navigateur, pas un fichier.</translation>
    </message>
</context>
<context>
    <name>MetadataFetch</name>
    <message>
        <source>Unknown Title</source>
        <translation>Titre inconnu</translation>
    </message>
    <message>
        <source>Unknown Artist</source>
        <translation>Artiste inconnu</translation>
    </message>
    <message>
        <source>yt-dlp could not be started.</source>
        <translation>yt-dlp n’a pas pu être lancé.</translation>
    </message>
    <message>
        <source>yt-dlp stopped answering.</source>
        <translation>yt-dlp ne répond plus.</translation>
    </message>
</context>
<context>
    <name>MiniPlayerView</name>
    <message>
        <source>Play</source>
        <translation>Lire</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Close Player</source>
        <translation>Fermer le lecteur</translation>
    </message>
    <message>
        <source>Mini Player</source>
        <translation>Mini-lecteur</translation>
    </message>
    <message>
        <source>Playback Position</source>
        <translation>Position de lecture</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Previous Track</source>
        <translation>Piste précédente</translation>
    </message>
    <message>
        <source>Next Track</source>
        <translation>Piste suivante</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
</context>
<context>
    <name>MissingToolsCard</name>
    <message>
        <source>Tools Missing (yt-dlp or ffmpeg)</source>
        <translation>Outils manquants (yt-dlp ou ffmpeg)</translation>
    </message>
    <message>
        <source>Install Automatically</source>
        <translation>Installer automatiquement</translation>
    </message>
    <message>
        <source>Veldtone can automatically download and set up yt-dlp &amp; ffmpeg for you.</source>
        <translation>Veldtone peut télécharger et configurer automatiquement yt-dlp et ffmpeg pour vous.</translation>
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
        <translation>Lot</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothèque</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Following</source>
        <translation>Abonnements</translation>
    </message>
</context>
<context>
    <name>OutputOptionsForm</name>
    <message>
        <source>Destination Folder</source>
        <translation>Dossier de destination</translation>
    </message>
    <message>
        <source>Default Download Folder</source>
        <translation>Dossier de téléchargement par défaut</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>Choisir...</translation>
    </message>
    <message>
        <source>Change...</source>
        <translation>Modifier...</translation>
    </message>
    <message>
        <source>Audio Format</source>
        <translation>Format audio</translation>
    </message>
    <message>
        <source>Default Format</source>
        <translation>Format par défaut</translation>
    </message>
    <message>
        <source>Audio Quality</source>
        <translation>Qualité audio</translation>
    </message>
    <message>
        <source>Default Bitrate</source>
        <translation>Débit par défaut</translation>
    </message>
    <message>
        <source>Lossless / Best Stream</source>
        <translation>Sans perte / meilleur flux</translation>
    </message>
    <message>
        <source>Embed Album Artwork</source>
        <translation>Intégrer la pochette</translation>
    </message>
    <message>
        <source>Embed ID3 Tags</source>
        <translation>Intégrer les balises ID3</translation>
    </message>
    <message>
        <source>Always embed YouTube thumbnail as album cover artwork</source>
        <translation>Toujours intégrer la miniature YouTube comme pochette d&apos;album</translation>
    </message>
    <message>
        <source>Always embed ID3 audio tags (Title, Artist, Channel, Album)</source>
        <translation>Toujours intégrer les balises ID3 (titre, artiste, chaîne, album)</translation>
    </message>
    <message>
        <source>Select Download Folder</source>
        <translation>Choisir le dossier de téléchargement</translation>
    </message>
    <message>
        <source>Square cover art</source>
        <translation>Pochette carrée</translation>
    </message>
    <message>
        <source>Split by chapters</source>
        <translation>Découper par chapitres</translation>
    </message>
</context>
<context>
    <name>PlaylistListing</name>
    <message>
        <source>yt-dlp could not be started.</source>
        <translation>yt-dlp n’a pas pu être lancé.</translation>
    </message>
    <message>
        <source>Could not list the playlist: %1</source>
        <translation>Impossible de lister la playlist : %1</translation>
    </message>
    <message>
        <source>The playlist has no tracks.</source>
        <translation>La playlist ne contient aucun titre.</translation>
    </message>
</context>
<context>
    <name>PlaylistOfferCard</name>
    <message>
        <source>This link is a playlist.</source>
        <translation>Ce lien est une playlist.</translation>
    </message>
    <message>
        <source>Rip as album</source>
        <translation>Extraire comme album</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Cancel Listing</source>
        <translation>Annuler la liste</translation>
    </message>
    <message>
        <source>Follow</source>
        <translation>Suivre</translation>
    </message>
    <message numerus="yes">
        <source>Rip all %n tracks in Batch</source>
        <translation>
            <numerusform>Extraire %n piste dans le lot</numerusform>
            <numerusform>Extraire les %n pistes dans le lot</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RipFailureCard</name>
    <message>
        <source>Extraction Failed</source>
        <translation>Échec de l&apos;extraction</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Update Tools</source>
        <translation>Mettre à jour les outils</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Ouvrir les réglages</translation>
    </message>
</context>
<context>
    <name>RipProgressCard</name>
    <message>
        <source>Downloading Audio...</source>
        <translation>Téléchargement de l&apos;audio...</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Progression du téléchargement</translation>
    </message>
    <message>
        <source>Cancel Download</source>
        <translation>Annuler le téléchargement</translation>
    </message>
    <message>
        <source>ETA: %1</source>
        <translation>Reste&#xa0;:&#xa0;%1</translation>
    </message>
</context>
<context>
    <name>RipSuccessCard</name>
    <message>
        <source>Extraction Complete!</source>
        <translation>Extraction terminée&#xa0;!</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Lire</translation>
    </message>
    <message>
        <source>Queue the whole playlist</source>
        <translation>Mettre toute la playlist en file</translation>
    </message>
    <message>
        <source>Playing; press to pause</source>
        <translation>Lecture en cours&#xa0;; appuyez pour mettre en pause</translation>
    </message>
    <message>
        <source>Press to play</source>
        <translation>Appuyez pour lire</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Préférences</translation>
    </message>
    <message>
        <source>General Defaults</source>
        <translation>Valeurs par défaut</translation>
    </message>
    <message>
        <source>Engine &amp; CLI Tools</source>
        <translation>Moteur et outils en ligne de commande</translation>
    </message>
    <message>
        <source>Check Dependencies</source>
        <translation>Vérifier les dépendances</translation>
    </message>
    <message>
        <source>Download &amp; Install Missing Tools Automatically</source>
        <translation>Télécharger et installer automatiquement les outils manquants</translation>
    </message>
    <message>
        <source>Version %1 (Native Qt %2 Widgets)</source>
        <translation>Version&#xa0;%1 (widgets Qt&#xa0;%2 natifs)</translation>
    </message>
    <message>
        <source>Use cookies from</source>
        <translation>Utiliser les cookies de</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucun</translation>
    </message>
    <message>
        <source>Update yt-dlp</source>
        <translation>Mettre à jour yt-dlp</translation>
    </message>
    <message>
        <source>Use previous version</source>
        <translation>Revenir à la version précédente</translation>
    </message>
    <message>
        <source>JavaScript runtime</source>
        <translation>Environnement JavaScript</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installer</translation>
    </message>
    <message>
        <source>Install Deno</source>
        <translation>Installer Deno</translation>
    </message>
    <message>
        <source>Check for tool updates automatically</source>
        <translation>Rechercher automatiquement les mises à jour des outils</translation>
    </message>
    <message>
        <source>Needs Deno 2.3 or later</source>
        <translation>Nécessite Deno 2.3 ou plus récent</translation>
    </message>
    <message>
        <source>YouTube needs it for most videos</source>
        <translation>YouTube en a besoin pour la plupart des vidéos</translation>
    </message>
    <message>
        <source>Simultaneous rips</source>
        <translation>Extractions simultanées</translation>
    </message>
    <message>
        <source>Proxy</source>
        <translation>Proxy</translation>
    </message>
    <message>
        <source> KB/s</source>
        <translation> Ko/s</translation>
    </message>
    <message>
        <source>No limit</source>
        <translation>Aucune limite</translation>
    </message>
    <message>
        <source>Download speed limit</source>
        <translation>Limite de vitesse de téléchargement</translation>
    </message>
    <message>
        <source>Not saved: a proxy is an http, https, socks4, socks4a, socks5 or socks5h link, such as socks5://127.0.0.1:1080.</source>
        <translation>Non enregistré : un proxy est un lien http, https, socks4, socks4a, socks5 ou socks5h, comme socks5://127.0.0.1:1080.</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musique</translation>
    </message>
    <message>
        <source>Square cover art</source>
        <translation>Pochette carrée</translation>
    </message>
    <message>
        <source>Read artist from titles</source>
        <translation>Lire l’artiste dans les titres</translation>
    </message>
    <message>
        <source>A title such as &quot;Artist - Song (Official Video)&quot; gives the artist and the song when the site names neither.</source>
        <translation>Un titre comme « Artiste - Chanson (Official Video) » donne l’artiste et la chanson quand le site ne les nomme pas.</translation>
    </message>
    <message>
        <source>Loudness tags</source>
        <translation>Tags de sonie</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Lecture</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Désactivé</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Piste</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Even out loudness</source>
        <translation>Égaliser le volume sonore</translation>
    </message>
    <message>
        <source>Stable</source>
        <translation>Stable</translation>
    </message>
    <message>
        <source>Nightly</source>
        <translation>Nightly</translation>
    </message>
    <message>
        <source>yt-dlp updates</source>
        <translation>Mises à jour de yt-dlp</translation>
    </message>
    <message>
        <source>Installed by Veldtone · signature verified</source>
        <translation>Installé par Veldtone · signature vérifiée</translation>
    </message>
    <message>
        <source>Installed by Veldtone · checksum verified</source>
        <translation>Installé par Veldtone · somme de contrôle vérifiée</translation>
    </message>
    <message>
        <source>Shipped with Veldtone</source>
        <translation>Fourni avec Veldtone</translation>
    </message>
    <message>
        <source>System package</source>
        <translation>Paquet du système</translation>
    </message>
    <message>
        <source>Found on PATH</source>
        <translation>Trouvé dans le PATH</translation>
    </message>
    <message>
        <source>Install Veldtone&apos;s Copy</source>
        <translation>Installer la copie de Veldtone</translation>
    </message>
    <message>
        <source>Switch to Nightly</source>
        <translation>Passer à Nightly</translation>
    </message>
    <message>
        <source>Switch to Stable</source>
        <translation>Passer à Stable</translation>
    </message>
    <message>
        <source>Pause between rips in long batches</source>
        <translation>Faire une pause entre les extractions des longs lots</translation>
    </message>
    <message>
        <source>Every hour</source>
        <translation>Toutes les heures</translation>
    </message>
    <message>
        <source>Every 6 hours</source>
        <translation>Toutes les 6 heures</translation>
    </message>
    <message>
        <source>Every day</source>
        <translation>Tous les jours</translation>
    </message>
    <message>
        <source>Only when asked</source>
        <translation>Seulement sur demande</translation>
    </message>
    <message>
        <source>Check followed links</source>
        <translation>Vérifier les liens suivis</translation>
    </message>
    <message>
        <source>Continue with the next track</source>
        <translation>Continuer avec la piste suivante</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Sidebar</source>
        <translation>Barre latérale</translation>
    </message>
</context>
<context>
    <name>SidebarRow</name>
    <message numerus="yes">
        <source>%n tracks</source>
        <translation>
            <numerusform>%n piste</numerusform>
            <numerusform>%n pistes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n rips waiting</source>
        <translation>
            <numerusform>%n extraction en attente</numerusform>
            <numerusform>%n extractions en attente</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ToolAdvice</name>
    <message>
        <source>The site wants a signed-in browser. Choose one under &quot;Use cookies from&quot; in Settings.</source>
        <translation>Le site demande un navigateur connecté. Choisissez-le sous &quot;Utiliser les cookies de&quot; dans les réglages.</translation>
    </message>
    <message>
        <source>yt-dlp may be too old for this site, or lack its JavaScript runtime.</source>
        <translation>yt-dlp est peut-être trop ancien pour ce site, ou il lui manque son environnement JavaScript.</translation>
    </message>
</context>
<context>
    <name>ToolOutputReader</name>
    <message>
        <source>Converting audio to %1 (%2)...</source>
        <translation>Conversion de l&apos;audio en&#xa0;%1 (%2)...</translation>
    </message>
    <message>
        <source>Embedding album artwork...</source>
        <translation>Intégration de la pochette...</translation>
    </message>
    <message>
        <source>Embedding audio tags...</source>
        <translation>Intégration des balises audio...</translation>
    </message>
    <message>
        <source>Unknown extraction error</source>
        <translation>Erreur d&apos;extraction inconnue</translation>
    </message>
</context>
<context>
    <name>ToolStatusRow</name>
    <message>
        <source>Found</source>
        <translation>Trouvé</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Manquant</translation>
    </message>
    <message>
        <source>Not found in standard paths</source>
        <translation>Introuvable dans les chemins standard</translation>
    </message>
    <message>
        <source>%1: found</source>
        <translation>%1&#xa0;: trouvé</translation>
    </message>
    <message>
        <source>%1: missing</source>
        <translation>%1&#xa0;: manquant</translation>
    </message>
    <message>
        <source>%1, version %2</source>
        <translation>%1, version&#xa0;%2</translation>
    </message>
</context>
<context>
    <name>ToolUpdater</name>
    <message>
        <source>Update available: %1</source>
        <translation>Mise à jour disponible : %1</translation>
    </message>
    <message>
        <source>Out of date</source>
        <translation>Obsolète</translation>
    </message>
    <message>
        <source>Looking for the latest %1...</source>
        <translation>Recherche de la dernière version de %1...</translation>
    </message>
    <message>
        <source>Could not reach the %1 releases.</source>
        <translation>Impossible de joindre les versions de %1.</translation>
    </message>
    <message>
        <source>%1 %2 is the latest.</source>
        <translation>%1 %2 est la dernière version.</translation>
    </message>
    <message>
        <source>Downloading %1 %2...</source>
        <translation>Téléchargement de %1 %2...</translation>
    </message>
    <message>
        <source>Could not download %1.</source>
        <translation>Impossible de télécharger %1.</translation>
    </message>
    <message>
        <source>The downloaded %1 does not match its published checksum; nothing was replaced.</source>
        <translation>Le %1 téléchargé ne correspond pas à sa somme de contrôle publiée ; rien n&apos;a été remplacé.</translation>
    </message>
    <message>
        <source>%1 %2 installed.</source>
        <translation>%1 %2 installé.</translation>
    </message>
    <message>
        <source>Could not put %1 into %2.</source>
        <translation>Impossible de placer %1 dans %2.</translation>
    </message>
    <message>
        <source>There is no %1 build for this machine.</source>
        <translation>Il n&apos;existe pas de %1 pour cette machine.</translation>
    </message>
    <message>
        <source>Downloading %1...</source>
        <translation>Téléchargement de %1...</translation>
    </message>
    <message>
        <source>Could not download the checksums of %1.</source>
        <translation>Impossible de télécharger les sommes de contrôle de %1.</translation>
    </message>
    <message>
        <source>Verifying and installing %1...</source>
        <translation>Vérification et installation de %1...</translation>
    </message>
    <message>
        <source>Verifying and installing %1 %2...</source>
        <translation>Vérification et installation de %1 %2...</translation>
    </message>
    <message>
        <source>%1 installed.</source>
        <translation>%1 installé.</translation>
    </message>
    <message>
        <source>The %1 release is not signed by its maintainers&apos; key; nothing was replaced.</source>
        <translation>La version de %1 n&apos;est pas signée par la clé de ses mainteneurs ; rien n&apos;a été remplacé.</translation>
    </message>
    <message>
        <source>The downloaded %1 could not be unpacked; nothing was replaced.</source>
        <translation>Le %1 téléchargé n&apos;a pas pu être décompressé ; rien n&apos;a été remplacé.</translation>
    </message>
    <message>
        <source>The new %1 did not run; nothing was replaced.</source>
        <translation>Le nouveau %1 ne s&apos;est pas lancé ; rien n&apos;a été remplacé.</translation>
    </message>
</context>
<context>
    <name>TrackDelegate</name>
    <message>
        <source>Remove from library</source>
        <translation>Retirer de la bibliothèque</translation>
    </message>
</context>
<context>
    <name>TrackListView</name>
    <message>
        <source>Play</source>
        <translation>Lire</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Remove from Library</source>
        <translation>Retirer de la bibliothèque</translation>
    </message>
</context>
</TS>
