<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt_BR" sourcelanguage="en">
<context>
    <name>ActivitySpinner</name>
    <message>
        <source>In progress</source>
        <translation>Em andamento</translation>
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
        <translation>FLAC sem perdas (.flac)</translation>
    </message>
    <message>
        <source>WAV Uncompressed (.wav)</source>
        <translation>WAV sem compressão (.wav)</translation>
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
        <translation>320 kbps (qualidade máxima)</translation>
    </message>
    <message>
        <source>320 kbps</source>
        <translation>320 kbps</translation>
    </message>
    <message>
        <source>256 kbps (High Quality)</source>
        <translation>256 kbps (alta qualidade)</translation>
    </message>
    <message>
        <source>256 kbps</source>
        <translation>256 kbps</translation>
    </message>
    <message>
        <source>192 kbps (Standard)</source>
        <translation>192 kbps (padrão)</translation>
    </message>
    <message>
        <source>192 kbps</source>
        <translation>192 kbps</translation>
    </message>
    <message>
        <source>128 kbps (Compact)</source>
        <translation>128 kbps (compacto)</translation>
    </message>
    <message>
        <source>128 kbps</source>
        <translation>128 kbps</translation>
    </message>
    <message>
        <source>Best Available (Original)</source>
        <translation>Melhor disponível (original)</translation>
    </message>
    <message>
        <source>Best (Auto)</source>
        <translation>Melhor (auto)</translation>
    </message>
</context>
<context>
    <name>BatchQueueModel</name>
    <message>
        <source>Waiting</source>
        <translation>Aguardando</translation>
    </message>
    <message>
        <source>Downloading %1%</source>
        <translation>Baixando %1%</translation>
    </message>
    <message>
        <source>Converting...</source>
        <translation>Convertendo...</translation>
    </message>
    <message>
        <source>Completed</source>
        <translation>Concluído</translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation>Falhou: %1</translation>
    </message>
    <message>
        <source>Already in Library</source>
        <translation>Já está na biblioteca</translation>
    </message>
</context>
<context>
    <name>BatchRunner</name>
    <message>
        <source>%1 of %2 completed</source>
        <translation>%1 de %2 concluídos</translation>
    </message>
    <message>
        <source>%1, %2 skipped</source>
        <translation>%1, %2 ignorados</translation>
    </message>
    <message>
        <source>Expanding playlist… %1</source>
        <translation>Expandindo a playlist… %1</translation>
    </message>
    <message>
        <source>%1, %2 failed</source>
        <translation>%1, %2 com falha</translation>
    </message>
    <message numerus="yes">
        <source>YouTube is limiting requests; the batch waits %n minutes before it goes on.</source>
        <translation>
            <numerusform>O YouTube está limitando as solicitações; o lote espera %n minuto antes de continuar.</numerusform>
            <numerusform>O YouTube está limitando as solicitações; o lote espera %n minutos antes de continuar.</numerusform>
        </translation>
    </message>
    <message>
        <source>The saved queue could not be read; it was kept aside and the queue starts empty.</source>
        <translation>Não foi possível ler a fila salva; ela foi guardada à parte e a fila começa vazia.</translation>
    </message>
    <message>
        <source>1 rip was waiting when Veldtone closed.</source>
        <translation>1 extração aguardava quando o Veldtone foi fechado.</translation>
    </message>
    <message numerus="yes">
        <source>%n rips were waiting when Veldtone closed.</source>
        <translation>
            <numerusform>%n extração aguardava quando o Veldtone foi fechado.</numerusform>
            <numerusform>%n extrações aguardavam quando o Veldtone foi fechado.</numerusform>
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
        <translation>Fila</translation>
    </message>
    <message>
        <source>Batch Audio Ripper</source>
        <translation>Extração de áudio em lote</translation>
    </message>
    <message>
        <source>Paste multiple YouTube links to rip all audio at once</source>
        <translation>Cole vários links do YouTube para extrair todo o áudio de uma vez</translation>
    </message>
    <message>
        <source>Clear Queue</source>
        <translation>Limpar fila</translation>
    </message>
    <message>
        <source>Enter YouTube links (one per line):</source>
        <translation>Digite os links do YouTube (um por linha):</translation>
    </message>
    <message>
        <source>YouTube links, one per line</source>
        <translation>Links do YouTube, um por linha</translation>
    </message>
    <message>
        <source>Paste Clipboard</source>
        <translation>Colar da área de transferência</translation>
    </message>
    <message>
        <source>Add to Queue</source>
        <translation>Adicionar à fila</translation>
    </message>
    <message>
        <source>Stop Batch</source>
        <translation>Parar lote</translation>
    </message>
    <message>
        <source>Add More URLs</source>
        <translation>Adicionar mais links</translation>
    </message>
    <message numerus="yes">
        <source>Rip All (%n Tracks)</source>
        <translation>
            <numerusform>Extrair tudo (%n faixa)</numerusform>
            <numerusform>Extrair tudo (%n faixas)</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Remover</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>Tentar novamente</translation>
    </message>
    <message>
        <source>Rip Again</source>
        <translation>Extrair novamente</translation>
    </message>
    <message>
        <source>Retry Failed</source>
        <translation>Tentar novamente os que falharam</translation>
    </message>
    <message>
        <source>Rip playlists as albums</source>
        <translation>Extrair playlists como álbuns</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Retomar</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Limpar</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Dispensar</translation>
    </message>
    <message>
        <source>Resume now</source>
        <translation>Retomar agora</translation>
    </message>
    <message>
        <source>Follow Playlist</source>
        <translation>Seguir a playlist</translation>
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
        <translation>Não foi possível salvar a biblioteca em %1 (%2). As alterações são mantidas e serão salvas na próxima vez.</translation>
    </message>
</context>
<context>
    <name>ConverterView</name>
    <message>
        <source>Converter</source>
        <translation>Conversor</translation>
    </message>
    <message>
        <source>Rip Audio (%1)</source>
        <translation>Extrair áudio (%1)</translation>
    </message>
    <message>
        <source>Rip studio-quality MP3 &amp; audio from YouTube videos</source>
        <translation>Extraia MP3 e áudio com qualidade de estúdio de vídeos do YouTube</translation>
    </message>
    <message>
        <source>YouTube Video Link</source>
        <translation>Link do vídeo do YouTube</translation>
    </message>
    <message>
        <source>https://www.youtube.com/watch?v=dQw4w9WgXcQ or https://youtu.be/dQw4w9WgXcQ</source>
        <translation>https://www.youtube.com/watch?v=dQw4w9WgXcQ ou https://youtu.be/dQw4w9WgXcQ</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Limpar</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Colar</translation>
    </message>
    <message>
        <source>New Rip</source>
        <translation>Nova extração</translation>
    </message>
    <message>
        <source>Ready (yt-dlp &amp; ffmpeg)</source>
        <translation>Pronto (yt-dlp e ffmpeg)</translation>
    </message>
    <message>
        <source>Checking Tools</source>
        <translation>Verificando ferramentas</translation>
    </message>
    <message>
        <source>Extracting Audio...</source>
        <translation>Extraindo áudio...</translation>
    </message>
    <message>
        <source>Update Tools</source>
        <translation>Atualizar ferramentas</translation>
    </message>
    <message>
        <source>yt-dlp %1 is out of date</source>
        <translation>yt-dlp %1 está desatualizado</translation>
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
        <translation>Mostrar arquivo</translation>
    </message>
</context>
<context>
    <name>DesktopTexts</name>
    <message>
        <source>Show in Folder</source>
        <translation>Mostrar na pasta</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Abrir pasta</translation>
    </message>
    <message>
        <source>Open in Default Player</source>
        <translation>Abrir no player padrão</translation>
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
        <translation>Atualizando detalhes: %1 de %2</translation>
    </message>
</context>
<context>
    <name>DownloadEngine</name>
    <message>
        <source>yt-dlp is missing. Please check Settings.</source>
        <translation>O yt-dlp não foi encontrado. Verifique as configurações.</translation>
    </message>
    <message>
        <source>Please enter a valid YouTube URL.</source>
        <translation>Digite um link do YouTube válido.</translation>
    </message>
    <message>
        <source>Extracted Audio</source>
        <translation>Áudio extraído</translation>
    </message>
    <message>
        <source>and 1 more track</source>
        <translation>e mais 1 faixa</translation>
    </message>
    <message>
        <source>and %1 more tracks</source>
        <translation>e mais %1 faixas</translation>
    </message>
    <message>
        <source>%1 tracks in &quot;%2&quot;</source>
        <translation>%1 faixas em “%2”</translation>
    </message>
    <message>
        <source>No chapters; ripped as one file.</source>
        <translation>Sem capítulos; extraído em um só arquivo.</translation>
    </message>
</context>
<context>
    <name>ExtractionJob</name>
    <message>
        <source>Cannot write to the folder %1</source>
        <translation>Não é possível gravar na pasta %1</translation>
    </message>
    <message>
        <source>Download failed with exit code %1</source>
        <translation>O download falhou com o código de saída %1</translation>
    </message>
    <message>
        <source>yt-dlp could not be started.</source>
        <translation>Não foi possível iniciar o yt-dlp.</translation>
    </message>
    <message>
        <source>Could not move &quot;%1&quot; into %2: %3</source>
        <translation>Não foi possível mover “%1” para %2: %3</translation>
    </message>
    <message>
        <source>(kept in %1)</source>
        <translation>(mantido em %1)</translation>
    </message>
    <message>
        <source>Chapter %1</source>
        <translation>Capítulo %1</translation>
    </message>
    <message>
        <source>Measuring loudness...</source>
        <translation>Medindo o loudness...</translation>
    </message>
</context>
<context>
    <name>FollowService</name>
    <message>
        <source>1 new track from %1</source>
        <translation>1 faixa nova de %1</translation>
    </message>
    <message>
        <source>%1 new tracks from %2</source>
        <translation>%1 faixas novas de %2</translation>
    </message>
</context>
<context>
    <name>FollowingView</name>
    <message>
        <source>Following</source>
        <translation>Seguindo</translation>
    </message>
    <message>
        <source>Not checked yet</source>
        <translation>Ainda não verificado</translation>
    </message>
    <message>
        <source>Checked just now</source>
        <translation>Verificado agora mesmo</translation>
    </message>
    <message numerus="yes">
        <source>Checked %n minutes ago</source>
        <translation>
            <numerusform>Verificado há %n minuto</numerusform>
            <numerusform>Verificado há %n minutos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Checked %n hours ago</source>
        <translation>
            <numerusform>Verificado há %n hora</numerusform>
            <numerusform>Verificado há %n horas</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Checked %n days ago</source>
        <translation>
            <numerusform>Verificado há %n dia</numerusform>
            <numerusform>Verificado há %n dias</numerusform>
        </translation>
    </message>
    <message>
        <source>New uploads of the channels and playlists you follow are ripped by themselves, each once.</source>
        <translation>Os novos envios dos canais e playlists que você segue são extraídos sozinhos, cada um uma vez.</translation>
    </message>
    <message>
        <source>Check All</source>
        <translation>Verificar tudo</translation>
    </message>
    <message>
        <source>Nothing followed yet. Follow a channel or a playlist: Veldtone looks at it again after it starts and every few hours, and rips each new upload once, as you chose when you followed it.</source>
        <translation>Nada seguido ainda. Siga um canal ou uma playlist: o Veldtone olha de novo ao iniciar e a cada poucas horas, e extrai cada novo envio uma vez, como você escolheu ao seguir.</translation>
    </message>
    <message>
        <source>A channel or playlist link</source>
        <translation>Um link de canal ou playlist</translation>
    </message>
    <message>
        <source>Channel or playlist link</source>
        <translation>Link de canal ou playlist</translation>
    </message>
    <message>
        <source>Follow</source>
        <translation>Seguir</translation>
    </message>
    <message>
        <source>Also rip the latest</source>
        <translation>Extrair também as últimas</translation>
    </message>
    <message>
        <source>Rip as album</source>
        <translation>Extrair como álbum</translation>
    </message>
    <message>
        <source>That link is followed already, or is not a web link.</source>
        <translation>Esse link já é seguido, ou não é um link da web.</translation>
    </message>
    <message>
        <source>as album</source>
        <translation>como álbum</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>Verificando…</translation>
    </message>
    <message numerus="yes">
        <source>%n tracks found</source>
        <translation>
            <numerusform>%n faixa encontrada</numerusform>
            <numerusform>%n faixas encontradas</numerusform>
        </translation>
    </message>
    <message>
        <source>Format for %1</source>
        <translation>Formato para %1</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Verificar agora</translation>
    </message>
    <message>
        <source>Check %1 now</source>
        <translation>Verificar %1 agora</translation>
    </message>
    <message>
        <source>Unfollow</source>
        <translation>Deixar de seguir</translation>
    </message>
    <message>
        <source>Unfollow %1</source>
        <translation>Deixar de seguir %1</translation>
    </message>
    <message>
        <source>Unfollow %1?</source>
        <translation>Deixar de seguir %1?</translation>
    </message>
    <message>
        <source>New uploads are no longer ripped. The files and library records ripped so far stay.</source>
        <translation>Os novos envios deixam de ser extraídos. Os arquivos e registros da biblioteca já extraídos permanecem.</translation>
    </message>
</context>
<context>
    <name>HistoryStore</name>
    <message>
        <source>a record has a date that cannot be written</source>
        <translation>um registro tem uma data que não pode ser gravada</translation>
    </message>
    <message>
        <source>the unreadable library file could not be moved aside</source>
        <translation>não foi possível pôr de lado o arquivo ilegível da biblioteca</translation>
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
        <translation>FLAC (sem perdas)</translation>
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
        <translation>Faixas</translation>
    </message>
    <message>
        <source>All Formats</source>
        <translation>Todos os formatos</translation>
    </message>
    <message>
        <source>Search tracks...</source>
        <translation>Pesquisar faixas...</translation>
    </message>
    <message>
        <source>Search tracks</source>
        <translation>Pesquisar faixas</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Limpar pesquisa</translation>
    </message>
    <message>
        <source>Format filter</source>
        <translation>Filtro de formato</translation>
    </message>
    <message>
        <source>Clear All</source>
        <translation>Limpar tudo</translation>
    </message>
    <message>
        <source>Clear all history items</source>
        <translation>Limpar todo o histórico</translation>
    </message>
    <message>
        <source>No Ripped Audio Yet</source>
        <translation>Nenhum áudio extraído ainda</translation>
    </message>
    <message>
        <source>Extracted YouTube tracks and MP3s will appear here.</source>
        <translation>As faixas do YouTube e os MP3 extraídos aparecerão aqui.</translation>
    </message>
    <message>
        <source>No Matching Tracks</source>
        <translation>Nenhuma faixa encontrada</translation>
    </message>
    <message>
        <source>Try searching with different terms or selecting &apos;All Formats&apos;.</source>
        <translation>Tente outros termos ou selecione &quot;Todos os formatos&quot;.</translation>
    </message>
    <message>
        <source>Reset Filters</source>
        <translation>Redefinir filtros</translation>
    </message>
    <message>
        <source>Loading Library…</source>
        <translation>Carregando biblioteca…</translation>
    </message>
    <message>
        <source>Play Track</source>
        <translation>Reproduzir faixa</translation>
    </message>
    <message>
        <source>Copy File Path</source>
        <translation>Copiar caminho do arquivo</translation>
    </message>
    <message>
        <source>Copy YouTube Link</source>
        <translation>Copiar link do YouTube</translation>
    </message>
    <message>
        <source>Remove from Library</source>
        <translation>Remover da biblioteca</translation>
    </message>
    <message>
        <source>Remove &quot;%1&quot; from your library history?</source>
        <translation>Remover &quot;%1&quot; do histórico da sua biblioteca?</translation>
    </message>
    <message>
        <source>Remove track from history?</source>
        <translation>Remover a faixa do histórico?</translation>
    </message>
    <message>
        <source>Delete Track from Library?</source>
        <translation>Excluir a faixa da biblioteca?</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Remover</translation>
    </message>
    <message>
        <source>Clear Download History?</source>
        <translation>Limpar o histórico de downloads?</translation>
    </message>
    <message>
        <source>This will remove all tracks from your library list. Your downloaded audio files will remain in your folders.</source>
        <translation>Todas as faixas serão removidas da lista da sua biblioteca. Os arquivos de áudio baixados continuarão nas suas pastas.</translation>
    </message>
    <message>
        <source>Cancel refreshing details</source>
        <translation>Cancelar a atualização dos detalhes</translation>
    </message>
    <message>
        <source>Library actions</source>
        <translation>Ações da biblioteca</translation>
    </message>
    <message>
        <source>Refresh All Details</source>
        <translation>Atualizar todos os detalhes</translation>
    </message>
    <message>
        <source>Refresh Details</source>
        <translation>Atualizar detalhes</translation>
    </message>
</context>
<context>
    <name>LibraryListModel</name>
    <message>
        <source>%1, Playing</source>
        <translation>%1, reproduzindo</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Arquivo</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Sair</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Reprodução</translation>
    </message>
    <message>
        <source>Play / Pause</source>
        <translation>Reproduzir / Pausar</translation>
    </message>
    <message>
        <source>Stop Playback</source>
        <translation>Parar reprodução</translation>
    </message>
    <message>
        <source>A Rip Is Running</source>
        <translation>Há uma extração em andamento</translation>
    </message>
    <message>
        <source>Stop the running rip and quit?</source>
        <translation>Interromper a extração em andamento e sair?</translation>
    </message>
    <message>
        <source>Stop and Quit</source>
        <translation>Interromper e sair</translation>
    </message>
    <message>
        <source>Rip finished</source>
        <translation>Extração concluída</translation>
    </message>
    <message>
        <source>Batch finished: %1</source>
        <translation>Lote concluído: %1</translation>
    </message>
    <message>
        <source>Rips Are Running</source>
        <translation>Há extrações em andamento</translation>
    </message>
    <message>
        <source>Stop %1 rips and quit?</source>
        <translation>Interromper %1 extrações e sair?</translation>
    </message>
    <message>
        <source>Rip failed: %1</source>
        <translation>A extração falhou: %1</translation>
    </message>
    <message>
        <source>Not a link</source>
        <translation>Não é um link</translation>
    </message>
    <message>
        <source>Veldtone rips from links to videos; drop a link from a browser, not a file.</source>
        <translation>O Veldtone extrai de links para vídeos; solte um link do navegador, não um arquivo.</translation>
    </message>
</context>
<context>
    <name>MetadataFetch</name>
    <message>
        <source>Unknown Title</source>
        <translation>Título desconhecido</translation>
    </message>
    <message>
        <source>Unknown Artist</source>
        <translation>Artista desconhecido</translation>
    </message>
    <message>
        <source>yt-dlp could not be started.</source>
        <translation>Não foi possível iniciar o yt-dlp.</translation>
    </message>
    <message>
        <source>yt-dlp stopped answering.</source>
        <translation>O yt-dlp parou de responder.</translation>
    </message>
</context>
<context>
    <name>MiniPlayerView</name>
    <message>
        <source>Play</source>
        <translation>Reproduzir</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Parar</translation>
    </message>
    <message>
        <source>Close Player</source>
        <translation>Fechar player</translation>
    </message>
    <message>
        <source>Mini Player</source>
        <translation>Miniplayer</translation>
    </message>
    <message>
        <source>Playback Position</source>
        <translation>Posição da reprodução</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Previous Track</source>
        <translation>Faixa anterior</translation>
    </message>
    <message>
        <source>Next Track</source>
        <translation>Próxima faixa</translation>
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
        <translation>Ferramentas ausentes (yt-dlp ou ffmpeg)</translation>
    </message>
    <message>
        <source>Install Automatically</source>
        <translation>Instalar automaticamente</translation>
    </message>
    <message>
        <source>Veldtone can automatically download and set up yt-dlp &amp; ffmpeg for you.</source>
        <translation>O Veldtone pode baixar e configurar o yt-dlp e o ffmpeg automaticamente para você.</translation>
    </message>
</context>
<context>
    <name>Navigation</name>
    <message>
        <source>Convert</source>
        <translation>Converter</translation>
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
        <translation>Configurações</translation>
    </message>
    <message>
        <source>Following</source>
        <translation>Seguindo</translation>
    </message>
</context>
<context>
    <name>OutputOptionsForm</name>
    <message>
        <source>Destination Folder</source>
        <translation>Pasta de destino</translation>
    </message>
    <message>
        <source>Default Download Folder</source>
        <translation>Pasta de downloads padrão</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>Escolher...</translation>
    </message>
    <message>
        <source>Change...</source>
        <translation>Alterar...</translation>
    </message>
    <message>
        <source>Audio Format</source>
        <translation>Formato de áudio</translation>
    </message>
    <message>
        <source>Default Format</source>
        <translation>Formato padrão</translation>
    </message>
    <message>
        <source>Audio Quality</source>
        <translation>Qualidade de áudio</translation>
    </message>
    <message>
        <source>Default Bitrate</source>
        <translation>Taxa de bits padrão</translation>
    </message>
    <message>
        <source>Lossless / Best Stream</source>
        <translation>Sem perdas / melhor fluxo</translation>
    </message>
    <message>
        <source>Embed Album Artwork</source>
        <translation>Incorporar capa</translation>
    </message>
    <message>
        <source>Embed ID3 Tags</source>
        <translation>Incorporar tags ID3</translation>
    </message>
    <message>
        <source>Always embed YouTube thumbnail as album cover artwork</source>
        <translation>Sempre incorporar a miniatura do YouTube como capa do álbum</translation>
    </message>
    <message>
        <source>Always embed ID3 audio tags (Title, Artist, Channel, Album)</source>
        <translation>Sempre incorporar tags ID3 (título, artista, canal, álbum)</translation>
    </message>
    <message>
        <source>Select Download Folder</source>
        <translation>Selecionar pasta de downloads</translation>
    </message>
    <message>
        <source>Square cover art</source>
        <translation>Capa quadrada</translation>
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
        <translation>Não foi possível iniciar o yt-dlp.</translation>
    </message>
    <message>
        <source>Could not list the playlist: %1</source>
        <translation>Não foi possível listar a playlist: %1</translation>
    </message>
    <message>
        <source>The playlist has no tracks.</source>
        <translation>A playlist não tem faixas.</translation>
    </message>
</context>
<context>
    <name>PlaylistOfferCard</name>
    <message>
        <source>This link is a playlist.</source>
        <translation>Este link é uma playlist.</translation>
    </message>
    <message>
        <source>Rip as album</source>
        <translation>Extrair como álbum</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Cancel Listing</source>
        <translation>Cancelar a listagem</translation>
    </message>
    <message>
        <source>Follow</source>
        <translation>Seguir</translation>
    </message>
    <message numerus="yes">
        <source>Rip all %n tracks in Batch</source>
        <translation>
            <numerusform>Extrair %n faixa no lote</numerusform>
            <numerusform>Extrair todas as %n faixas no lote</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RipFailureCard</name>
    <message>
        <source>Extraction Failed</source>
        <translation>Falha na extração</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Fechar</translation>
    </message>
    <message>
        <source>Update Tools</source>
        <translation>Atualizar ferramentas</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Abrir configurações</translation>
    </message>
</context>
<context>
    <name>RipProgressCard</name>
    <message>
        <source>Downloading Audio...</source>
        <translation>Baixando áudio...</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Progresso do download</translation>
    </message>
    <message>
        <source>Cancel Download</source>
        <translation>Cancelar download</translation>
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
        <translation>Extração concluída!</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproduzir</translation>
    </message>
    <message>
        <source>Queue the whole playlist</source>
        <translation>Enfileirar a playlist inteira</translation>
    </message>
    <message>
        <source>Playing; press to pause</source>
        <translation>Reproduzindo; pressione para pausar</translation>
    </message>
    <message>
        <source>Press to play</source>
        <translation>Pressione para reproduzir</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Configurações</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Preferências</translation>
    </message>
    <message>
        <source>General Defaults</source>
        <translation>Padrões gerais</translation>
    </message>
    <message>
        <source>Engine &amp; CLI Tools</source>
        <translation>Motor e ferramentas de linha de comando</translation>
    </message>
    <message>
        <source>Check Dependencies</source>
        <translation>Verificar dependências</translation>
    </message>
    <message>
        <source>Download &amp; Install Missing Tools Automatically</source>
        <translation>Baixar e instalar automaticamente as ferramentas ausentes</translation>
    </message>
    <message>
        <source>Version %1 (Native Qt %2 Widgets)</source>
        <translation>Versão %1 (widgets nativos do Qt %2)</translation>
    </message>
    <message>
        <source>Use cookies from</source>
        <translation>Usar cookies de</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Nenhum</translation>
    </message>
    <message>
        <source>Update yt-dlp</source>
        <translation>Atualizar yt-dlp</translation>
    </message>
    <message>
        <source>Use previous version</source>
        <translation>Usar a versão anterior</translation>
    </message>
    <message>
        <source>JavaScript runtime</source>
        <translation>Ambiente JavaScript</translation>
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
        <translation>Verificar atualizações das ferramentas automaticamente</translation>
    </message>
    <message>
        <source>Needs Deno 2.3 or later</source>
        <translation>Requer Deno 2.3 ou posterior</translation>
    </message>
    <message>
        <source>YouTube needs it for most videos</source>
        <translation>O YouTube precisa dele para a maioria dos vídeos</translation>
    </message>
    <message>
        <source>Simultaneous rips</source>
        <translation>Extrações simultâneas</translation>
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
        <translation>Sem limite</translation>
    </message>
    <message>
        <source>Download speed limit</source>
        <translation>Limite de velocidade de download</translation>
    </message>
    <message>
        <source>Not saved: a proxy is an http, https, socks4, socks4a, socks5 or socks5h link, such as socks5://127.0.0.1:1080.</source>
        <translation>Não salvo: um proxy é um link http, https, socks4, socks4a, socks5 ou socks5h, como socks5://127.0.0.1:1080.</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Música</translation>
    </message>
    <message>
        <source>Square cover art</source>
        <translation>Capa quadrada</translation>
    </message>
    <message>
        <source>Read artist from titles</source>
        <translation>Ler o artista dos títulos</translation>
    </message>
    <message>
        <source>A title such as &quot;Artist - Song (Official Video)&quot; gives the artist and the song when the site names neither.</source>
        <translation>Um título como “Artista - Música (Official Video)” dá o artista e a música quando o site não os informa.</translation>
    </message>
    <message>
        <source>Loudness tags</source>
        <translation>Tags de loudness</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Reprodução</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Desligado</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Faixa</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Álbum</translation>
    </message>
    <message>
        <source>Even out loudness</source>
        <translation>Igualar o volume</translation>
    </message>
    <message>
        <source>Stable</source>
        <translation>Estável</translation>
    </message>
    <message>
        <source>Nightly</source>
        <translation>Nightly</translation>
    </message>
    <message>
        <source>yt-dlp updates</source>
        <translation>Atualizações do yt-dlp</translation>
    </message>
    <message>
        <source>Installed by Veldtone · signature verified</source>
        <translation>Instalado pelo Veldtone · assinatura verificada</translation>
    </message>
    <message>
        <source>Installed by Veldtone · checksum verified</source>
        <translation>Instalado pelo Veldtone · soma de verificação conferida</translation>
    </message>
    <message>
        <source>Shipped with Veldtone</source>
        <translation>Incluído no Veldtone</translation>
    </message>
    <message>
        <source>System package</source>
        <translation>Pacote do sistema</translation>
    </message>
    <message>
        <source>Found on PATH</source>
        <translation>Encontrado no PATH</translation>
    </message>
    <message>
        <source>Install Veldtone&apos;s Copy</source>
        <translation>Instalar a cópia do Veldtone</translation>
    </message>
    <message>
        <source>Switch to Nightly</source>
        <translation>Mudar para Nightly</translation>
    </message>
    <message>
        <source>Switch to Stable</source>
        <translation>Mudar para Estável</translation>
    </message>
    <message>
        <source>Pause between rips in long batches</source>
        <translation>Pausar entre extrações em lotes longos</translation>
    </message>
    <message>
        <source>Every hour</source>
        <translation>A cada hora</translation>
    </message>
    <message>
        <source>Every 6 hours</source>
        <translation>A cada 6 horas</translation>
    </message>
    <message>
        <source>Every day</source>
        <translation>Todo dia</translation>
    </message>
    <message>
        <source>Only when asked</source>
        <translation>Só quando pedido</translation>
    </message>
    <message>
        <source>Check followed links</source>
        <translation>Verificar os links seguidos</translation>
    </message>
    <message>
        <source>Continue with the next track</source>
        <translation>Continuar com a próxima faixa</translation>
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
            <numerusform>%n faixa</numerusform>
            <numerusform>%n faixas</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n rips waiting</source>
        <translation>
            <numerusform>%n extração aguardando</numerusform>
            <numerusform>%n extrações aguardando</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ToolAdvice</name>
    <message>
        <source>The site wants a signed-in browser. Choose one under &quot;Use cookies from&quot; in Settings.</source>
        <translation>O site pede um navegador com sessão iniciada. Escolha-o em &quot;Usar cookies de&quot; nas Configurações.</translation>
    </message>
    <message>
        <source>yt-dlp may be too old for this site, or lack its JavaScript runtime.</source>
        <translation>O yt-dlp pode estar antigo demais para este site ou sem seu ambiente JavaScript.</translation>
    </message>
</context>
<context>
    <name>ToolOutputReader</name>
    <message>
        <source>Converting audio to %1 (%2)...</source>
        <translation>Convertendo o áudio para %1 (%2)...</translation>
    </message>
    <message>
        <source>Embedding album artwork...</source>
        <translation>Incorporando a capa...</translation>
    </message>
    <message>
        <source>Embedding audio tags...</source>
        <translation>Incorporando as tags de áudio...</translation>
    </message>
    <message>
        <source>Unknown extraction error</source>
        <translation>Erro de extração desconhecido</translation>
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
        <translation>Ausente</translation>
    </message>
    <message>
        <source>Not found in standard paths</source>
        <translation>Não encontrado nos caminhos padrão</translation>
    </message>
    <message>
        <source>%1: found</source>
        <translation>%1: encontrado</translation>
    </message>
    <message>
        <source>%1: missing</source>
        <translation>%1: ausente</translation>
    </message>
    <message>
        <source>%1, version %2</source>
        <translation>%1, versão %2</translation>
    </message>
</context>
<context>
    <name>ToolUpdater</name>
    <message>
        <source>Update available: %1</source>
        <translation>Atualização disponível: %1</translation>
    </message>
    <message>
        <source>Out of date</source>
        <translation>Desatualizado</translation>
    </message>
    <message>
        <source>Looking for the latest %1...</source>
        <translation>Procurando a versão mais recente de %1...</translation>
    </message>
    <message>
        <source>Could not reach the %1 releases.</source>
        <translation>Não foi possível acessar as versões de %1.</translation>
    </message>
    <message>
        <source>%1 %2 is the latest.</source>
        <translation>%1 %2 é a versão mais recente.</translation>
    </message>
    <message>
        <source>Downloading %1 %2...</source>
        <translation>Baixando %1 %2...</translation>
    </message>
    <message>
        <source>Could not download %1.</source>
        <translation>Não foi possível baixar %1.</translation>
    </message>
    <message>
        <source>The downloaded %1 does not match its published checksum; nothing was replaced.</source>
        <translation>O %1 baixado não corresponde à soma de verificação publicada; nada foi substituído.</translation>
    </message>
    <message>
        <source>%1 %2 installed.</source>
        <translation>%1 %2 instalado.</translation>
    </message>
    <message>
        <source>Could not put %1 into %2.</source>
        <translation>Não foi possível colocar %1 em %2.</translation>
    </message>
    <message>
        <source>There is no %1 build for this machine.</source>
        <translation>Não há %1 para esta máquina.</translation>
    </message>
    <message>
        <source>Downloading %1...</source>
        <translation>Baixando %1...</translation>
    </message>
    <message>
        <source>Could not download the checksums of %1.</source>
        <translation>Não foi possível baixar as somas de verificação do %1.</translation>
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
        <translation>A versão do %1 não está assinada pela chave de seus mantenedores; nada foi substituído.</translation>
    </message>
    <message>
        <source>The downloaded %1 could not be unpacked; nothing was replaced.</source>
        <translation>Não foi possível descompactar o %1 baixado; nada foi substituído.</translation>
    </message>
    <message>
        <source>The new %1 did not run; nothing was replaced.</source>
        <translation>O novo %1 não foi executado; nada foi substituído.</translation>
    </message>
</context>
<context>
    <name>TrackDelegate</name>
    <message>
        <source>Remove from library</source>
        <translation>Remover da biblioteca</translation>
    </message>
</context>
<context>
    <name>TrackListView</name>
    <message>
        <source>Play</source>
        <translation>Reproduzir</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Remove from Library</source>
        <translation>Remover da biblioteca</translation>
    </message>
</context>
</TS>
