<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name>AppCommands</name>
    <message>
        <source>Add Folder…</source>
        <translation>Aggiungi cartella…</translation>
    </message>
    <message>
        <source>Remove from List</source>
        <translation>Rimuovi dall’elenco</translation>
    </message>
    <message>
        <source>Save Preset</source>
        <translation>Salva preset</translation>
    </message>
    <message>
        <source>Save Preset As…</source>
        <translation>Salva preset come…</translation>
    </message>
    <message>
        <source>Show Presets in File Manager</source>
        <translation>Mostra i preset nel gestore file</translation>
    </message>
    <message>
        <source>Restore Previous Names</source>
        <translation>Ripristina i nomi precedenti</translation>
    </message>
    <message>
        <source>Restore Original Names</source>
        <translation>Ripristina i nomi originali</translation>
    </message>
    <message>
        <source>Tick All</source>
        <translation>Spunta tutti</translation>
    </message>
    <message>
        <source>Untick All</source>
        <translation>Togli tutte le spunte</translation>
    </message>
    <message>
        <source>Find a File</source>
        <translation>Trova un file</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Rinomina</translation>
    </message>
    <message>
        <source>All files</source>
        <translation>Tutti i file</translation>
    </message>
    <message>
        <source>Only ticked</source>
        <translation>Solo quelli spuntati</translation>
    </message>
    <message>
        <source>Go to the First Error</source>
        <translation>Vai al primo errore</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nome</translation>
    </message>
    <message>
        <source>Capture Time</source>
        <translation>Ora dello scatto</translation>
    </message>
    <message>
        <source>Keep twins together</source>
        <translation>Tieni insieme i gemelli</translation>
    </message>
    <message>
        <source>Show in File Manager After Renaming</source>
        <translation>Mostra nel gestore file dopo la rinomina</translation>
    </message>
    <message>
        <source>Turn Off This Change</source>
        <translation>Disattiva questo ritocco</translation>
    </message>
    <message>
        <source>Duplicate Change</source>
        <translation>Duplica il ritocco</translation>
    </message>
    <message>
        <source>Move Change Up</source>
        <translation>Sposta il ritocco in su</translation>
    </message>
    <message>
        <source>Move Change Down</source>
        <translation>Sposta il ritocco in giù</translation>
    </message>
    <message>
        <source>Turn On All Changes</source>
        <translation>Attiva tutti i ritocchi</translation>
    </message>
    <message>
        <source>Turn Off All Changes</source>
        <translation>Disattiva tutti i ritocchi</translation>
    </message>
    <message>
        <source>Delete All Changes</source>
        <translation>Elimina tutti i ritocchi</translation>
    </message>
    <message>
        <source>Use the New Name</source>
        <translation>Usa il nuovo nome</translation>
    </message>
    <message>
        <source>Start from the Original Name</source>
        <translation>Parti dal nome originale</translation>
    </message>
    <message>
        <source>_ underscore</source>
        <translation>_ trattino basso</translation>
    </message>
    <message>
        <source>- dash</source>
        <translation>- trattino</translation>
    </message>
    <message>
        <source>space</source>
        <translation>spazio</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>niente</translation>
    </message>
    <message>
        <source>Show or hide the file panel</source>
        <translation>Mostra o nascondi il pannello del file</translation>
    </message>
    <message>
        <source>History…</source>
        <translation>Cronologia…</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Impostazioni</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Controlla aggiornamenti…</translation>
    </message>
    <message>
        <source>Tessane Rename Guide</source>
        <translation>Guida di Tessane Rename</translation>
    </message>
    <message>
        <source>Report a Problem…</source>
        <translation>Segnala un problema…</translation>
    </message>
    <message>
        <source>Tessane Rename Website</source>
        <translation>Sito web di Tessane Rename</translation>
    </message>
    <message>
        <source>Turn On This Change</source>
        <translation>Attiva questo ritocco</translation>
    </message>
    <message>
        <source>Tessane Rename</source>
        <translation>Tessane Rename</translation>
    </message>
    <message>
        <source>File</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Modifica</translation>
    </message>
    <message>
        <source>Changes</source>
        <translation>Ritocchi</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Vista</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Finestra</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aiuto</translation>
    </message>
    <message>
        <source>New Window</source>
        <translation>Nuova finestra</translation>
    </message>
    <message>
        <source>About Tessane Rename</source>
        <translation>Informazioni su Tessane Rename</translation>
    </message>
</context>
<context>
    <name>BetaReport</name>
    <message>
        <source>What happened</source>
        <translation type="vanished">Che cosa è successo</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation type="vanished">(niente)</translation>
    </message>
    <message>
        <source>On screen</source>
        <translation type="vanished">Sullo schermo</translation>
    </message>
    <message>
        <source>Rules</source>
        <translation type="vanished">Regole</translation>
    </message>
    <message>
        <source>Diary</source>
        <translation type="vanished">Diario</translation>
    </message>
    <message>
        <source>Crash</source>
        <translation type="vanished">Arresto anomalo</translation>
    </message>
</context>
<context>
    <name>BetaReporter</name>
    <message>
        <source>(none)</source>
        <translation type="vanished">(nessuno)</translation>
    </message>
    <message>
        <source>Error on screen: %1</source>
        <translation type="vanished">Errore sullo schermo: %1</translation>
    </message>
    <message>
        <source>Folders in the list: %1</source>
        <translation type="vanished">Cartelle nell’elenco: %1</translation>
    </message>
    <message>
        <source>Tessane Rename %1: problem report</source>
        <translation>Tessane Rename %1: segnalazione di un problema</translation>
    </message>
    <message>
        <source>The details are in the attached file.</source>
        <translation>I dettagli sono nel file allegato.</translation>
    </message>
    <message>
        <source>No mail app could take the report: save it and send the file.</source>
        <translation>Nessuna app di posta ha potuto ricevere la segnalazione: salvala e invia tu il file.</translation>
    </message>
    <message>
        <source>Report sent to your mail app</source>
        <translation>Segnalazione passata alla tua app di posta</translation>
    </message>
</context>
<context>
    <name>ChangeList</name>
    <message>
        <source>“%1”</source>
        <translation>“%1”</translation>
    </message>
    <message>
        <source>UPPER CASE</source>
        <translation>MAIUSCOLE</translation>
    </message>
    <message>
        <source>lower case</source>
        <translation>minuscole</translation>
    </message>
    <message>
        <source>Title Case</source>
        <translation>Iniziali Maiuscole</translation>
    </message>
    <message>
        <source>block %1</source>
        <translation>blocco %1</translation>
    </message>
    <message>
        <source>block %1 from the end</source>
        <translation>blocco %1 dalla fine</translation>
    </message>
    <message>
        <source>at the start</source>
        <translation>all’inizio</translation>
    </message>
    <message>
        <source>at the end</source>
        <translation>alla fine</translation>
    </message>
    <message>
        <source>after %1 characters</source>
        <translation>dopo %1 caratteri</translation>
    </message>
    <message>
        <source>before %1</source>
        <translation>prima di %1</translation>
    </message>
    <message>
        <source>after %1</source>
        <translation>dopo %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 → %2</source>
        <translation>%1 → %2</translation>
    </message>
    <message>
        <source>between %1 and %2</source>
        <translation>fra %1 e %2</translation>
    </message>
    <message>
        <source>%1 to place %2</source>
        <translation>%1 al posto %2</translation>
    </message>
    <message>
        <source>.%1</source>
        <translation>.%1</translation>
    </message>
    <message>
        <source>extension in %1</source>
        <translation>estensione in %1</translation>
    </message>
    <message>
        <source>%1, %2… %3</source>
        <translation>%1, %2… %3</translation>
    </message>
    <message>
        <source>keeps %1</source>
        <translation>conserva %1</translation>
    </message>
</context>
<context>
    <name>ClockSync</name>
    <message>
        <source>Select two photos taken at the same instant by two cameras to line up their clocks.</source>
        <translation>Seleziona due foto scattate nello stesso istante da due fotocamere per mettere in riga i loro orologi.</translation>
    </message>
    <message>
        <source>These two photos come from the same camera. Select one photo from each camera.</source>
        <translation>Queste due foto vengono dalla stessa fotocamera. Seleziona una foto per ciascuna fotocamera.</translation>
    </message>
    <message>
        <source>A camera can only be told apart by its serial number or model, and one of these photos has neither.</source>
        <translation>Una fotocamera si distingue solo dal numero di serie o dal modello, e una di queste foto non ha né l’uno né l’altro.</translation>
    </message>
    <message>
        <source>One of these photos doesn’t say when it was taken.</source>
        <translation>Una di queste foto non dice quando è stata scattata.</translation>
    </message>
    <message>
        <source>If these two photos were taken at the same instant, the clocks can be lined up. Choose the camera with the right time.</source>
        <translation>Se queste due foto sono state scattate nello stesso istante, gli orologi si possono mettere in riga. Scegli la fotocamera con l’ora giusta.</translation>
    </message>
    <message>
        <source>%1 clock: %2</source>
        <translation>Orologio di %1: %2</translation>
    </message>
    <message>
        <source>%1 was already in time</source>
        <translation>%1 era già in orario</translation>
    </message>
    <message>
        <source>The difference goes in Settings › Camera Bodies, where you can change it. The files aren’t changed.</source>
        <translation>La differenza va in Impostazioni › Corpi macchina, dove puoi cambiarla. I file non vengono modificati.</translation>
    </message>
</context>
<context>
    <name>CrashWatch</name>
    <message>
        <source>The previous run ended without quitting and left no crash details (it may have been stopped by the system).</source>
        <translation>L’ultima volta l’app si è interrotta senza essere chiusa e non ha lasciato dettagli sull’arresto (forse l’ha fermata il sistema).</translation>
    </message>
</context>
<context>
    <name>DesktopServices</name>
    <message>
        <source>The file is no longer there.</source>
        <translation>Il file non c’è più.</translation>
    </message>
    <message>
        <source>There’s no Trash on this disk.</source>
        <translation>Su questo disco non c’è un cestino.</translation>
    </message>
</context>
<context>
    <name>FileInspection</name>
    <message>
        <source>Current name</source>
        <translation>Nome attuale</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Ritocco</translation>
    </message>
    <message>
        <source>File created</source>
        <translation>File creato</translation>
    </message>
    <message>
        <source>File modified</source>
        <translation>File modificato</translation>
    </message>
    <message>
        <source>Taken</source>
        <translation>Scattata</translation>
    </message>
    <message>
        <source>Camera maker</source>
        <translation>Marca della fotocamera</translation>
    </message>
    <message>
        <source>Camera model</source>
        <translation>Modello della fotocamera</translation>
    </message>
    <message>
        <source>Lens</source>
        <translation>Obiettivo</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Numero di serie</translation>
    </message>
    <message>
        <source>ISO</source>
        <translation>ISO</translation>
    </message>
    <message>
        <source>Shutter speed</source>
        <translation>Tempo di scatto</translation>
    </message>
    <message>
        <source>Aperture</source>
        <translation>Diaframma</translation>
    </message>
    <message>
        <source>Focal length</source>
        <translation>Lunghezza focale</translation>
    </message>
    <message>
        <source>City</source>
        <translation>Città</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Luogo</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>Autore</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>Headline</source>
        <translation>Intestazione</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Durata</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Larghezza</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Altezza</translation>
    </message>
    <message>
        <source>Frame rate</source>
        <translation>Fotogrammi al secondo</translation>
    </message>
    <message>
        <source>Codec</source>
        <translation>Codec</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Artista</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Traccia</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Anno</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Pagine</translation>
    </message>
    <message>
        <source>1/%1 s</source>
        <translation>1/%1 s</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>f/%1</source>
        <translation>f/%1</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 mm</translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation>%1 fps</translation>
    </message>
    <message>
        <source>%1 px</source>
        <translation>%1 px</translation>
    </message>
    <message>
        <source>Body</source>
        <translation>Corpo</translation>
    </message>
    <message>
        <source>Time in names</source>
        <translation>Ora nei nomi</translation>
    </message>
    <message>
        <source>Left alone: its name isn’t written in UTF-8, so it can’t be shown or renamed safely. Rename it in the file manager first.</source>
        <translation>Lasciato com’è: il nome non è scritto in UTF-8, quindi non si può mostrare né rinominare con sicurezza. Rinominalo prima nel gestore dei file.</translation>
    </message>
</context>
<context>
    <name>FormatToken</name>
    <message>
        <source>Counter</source>
        <translation>Contatore</translation>
    </message>
    <message>
        <source>Current name</source>
        <translation>Nome attuale</translation>
    </message>
    <message>
        <source>Original name</source>
        <translation>Nome originale</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Cartella</translation>
    </message>
    <message>
        <source>Extension</source>
        <translation>Estensione</translation>
    </message>
    <message>
        <source>Camera body</source>
        <translation>Corpo macchina</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Risoluzione</translation>
    </message>
    <message>
        <source>Frame number</source>
        <translation>Numero di scatto</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Creato</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Modificato</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>Make</source>
        <translation>Marca</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modello</translation>
    </message>
    <message>
        <source>Lens</source>
        <translation>Obiettivo</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Numero di serie</translation>
    </message>
    <message>
        <source>ISO</source>
        <translation>ISO</translation>
    </message>
    <message>
        <source>Shutter speed</source>
        <translation>Tempo di scatto</translation>
    </message>
    <message>
        <source>Aperture</source>
        <translation>Diaframma</translation>
    </message>
    <message>
        <source>Focal length</source>
        <translation>Lunghezza focale</translation>
    </message>
    <message>
        <source>City</source>
        <translation>Città</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Luogo</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>Autore</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>Headline</source>
        <translation>Intestazione</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Durata</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Larghezza</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Altezza</translation>
    </message>
    <message>
        <source>Frame rate</source>
        <translation>Fotogrammi al secondo</translation>
    </message>
    <message>
        <source>Codec</source>
        <translation>Codec</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Artista</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Traccia</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Anno</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Pagine</translation>
    </message>
    <message>
        <source>Date and time</source>
        <translation>Data e ora</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Fotocamera</translation>
    </message>
    <message>
        <source>Exposure</source>
        <translation>Esposizione</translation>
    </message>
    <message>
        <source>Place and people</source>
        <translation>Luoghi e persone</translation>
    </message>
    <message>
        <source>Media</source>
        <translation>Media</translation>
    </message>
    <message>
        <source>File</source>
        <translation>File</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>“%1”</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Ora</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>InterfaceTranslation</name>
    <message>
        <source>System language</source>
        <translation>Lingua del sistema</translation>
    </message>
</context>
<context>
    <name>Messages</name>
    <message>
        <source>1 folder selected</source>
        <translation>1 cartella selezionata</translation>
    </message>
    <message>
        <source>%1 folders selected</source>
        <translation>%1 cartelle selezionate</translation>
    </message>
    <message>
        <source>1 file renamed</source>
        <translation>1 file rinominato</translation>
    </message>
    <message>
        <source>%1 files renamed</source>
        <translation>%1 file rinominati</translation>
    </message>
    <message>
        <source>1 file back to its previous name</source>
        <translation>1 file riportato al nome precedente</translation>
    </message>
    <message>
        <source>%1 files back to their previous names</source>
        <translation>%1 file riportati ai nomi precedenti</translation>
    </message>
    <message>
        <source>1 file back to its original name</source>
        <translation>1 file riportato al nome originale</translation>
    </message>
    <message>
        <source>%1 files back to their original names</source>
        <translation>%1 file riportati ai nomi originali</translation>
    </message>
    <message>
        <source>The name is too long</source>
        <translation>Il nome è troppo lungo</translation>
    </message>
    <message>
        <source>There’s already %1 in the folder</source>
        <translation>Nella cartella c’è già %1</translation>
    </message>
    <message>
        <source>The name is empty</source>
        <translation>Il nome è vuoto</translation>
    </message>
    <message>
        <source>The name can’t start with a dot</source>
        <translation>Il nome non può iniziare con un punto</translation>
    </message>
    <message>
        <source>The name contains characters that aren’t allowed (/ :)</source>
        <translation>Il nome contiene caratteri non ammessi (/ :)</translation>
    </message>
    <message>
        <source>Same name as another file in the batch</source>
        <translation>Stesso nome di un altro file del gruppo</translation>
    </message>
    <message>
        <source>The regular expression isn’t valid</source>
        <translation>L’espressione regolare non è valida</translation>
    </message>
    <message>
        <source>A locked part of the name was left as it is</source>
        <translation>Una parte bloccata del nome è stata lasciata com’è</translation>
    </message>
    <message>
        <source>The counter went past its limit</source>
        <translation>Il contatore ha superato il suo limite</translation>
    </message>
    <message>
        <source>%1 is missing: nothing goes in its place</source>
        <translation>%1 manca: al suo posto non va niente</translation>
    </message>
    <message>
        <source>%1 is missing: %2 goes in its place</source>
        <translation>%1 manca: al suo posto va %2</translation>
    </message>
    <message>
        <source>%1 isn’t a known value</source>
        <translation>%1 non è un valore conosciuto</translation>
    </message>
    <message>
        <source>The format doesn’t apply to %1: the plain value is used</source>
        <translation>Il formato non si applica a %1: si usa il valore così com’è</translation>
    </message>
    <message>
        <source>A “{” has no closing “}”</source>
        <translation>Una “{” non ha la “}” di chiusura</translation>
    </message>
    <message>
        <source>The regular expression takes too long on this name: it was left as it is</source>
        <translation>L’espressione regolare impiega troppo tempo su questo nome: è stato lasciato com’è</translation>
    </message>
    <message>
        <source>%1 is outside the batch: it won’t be renamed</source>
        <translation>%1 è fuori dal gruppo: non verrà rinominato</translation>
    </message>
    <message>
        <source>Can’t read the folder: existing names weren’t checked</source>
        <translation>Impossibile leggere la cartella: i nomi già presenti non sono stati controllati</translation>
    </message>
    <message>
        <source>This preset was made by a newer version of Tessane Rename (format %1)</source>
        <translation>Questo preset è stato creato da una versione più recente di Tessane Rename (formato %1)</translation>
    </message>
    <message>
        <source>This file isn’t a preset that can be read</source>
        <translation>Questo file non è un preset leggibile</translation>
    </message>
    <message>
        <source>This file isn’t a preset that can be read: %1</source>
        <translation>Questo file non è un preset leggibile: %1</translation>
    </message>
    <message>
        <source>Couldn’t open %1: %2</source>
        <translation>Impossibile aprire %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t create %1: %2</source>
        <translation>Impossibile creare %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t create the folder %1: %2</source>
        <translation>Impossibile creare la cartella %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t open the folder %1: %2</source>
        <translation>Impossibile aprire la cartella %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t read the folder %1: %2</source>
        <translation>Impossibile leggere la cartella %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t write %1: %2</source>
        <translation>Impossibile scrivere %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t write %1 to the disk: %2</source>
        <translation>Impossibile scrivere %1 sul disco: %2</translation>
    </message>
    <message>
        <source>Couldn’t replace %1: %2</source>
        <translation>Impossibile sostituire %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t rename %1: %2</source>
        <translation>Impossibile rinominare %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t remove %1: %2</source>
        <translation>Impossibile rimuovere %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t lock %1: %2</source>
        <translation>Impossibile bloccare %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t find %1: %2</source>
        <translation>Impossibile trovare %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t read the preset %1: %2</source>
        <translation>Impossibile leggere il preset %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t save the preset %1: %2</source>
        <translation>Impossibile salvare il preset %1: %2</translation>
    </message>
    <message>
        <source>Couldn’t delete the preset %1: %2</source>
        <translation>Impossibile eliminare il preset %1: %2</translation>
    </message>
    <message>
        <source>%1 is no longer in the folder.</source>
        <translation>%1 non è più nella cartella.</translation>
    </message>
    <message>
        <source>Couldn’t rename %1.</source>
        <translation>Impossibile rinominare %1.</translation>
    </message>
    <message>
        <source>Two files would be called %1.</source>
        <translation>Due file si chiamerebbero %1.</translation>
    </message>
    <message>
        <source>There’s already a file called %1 in the folder. Rename or move it and try again.</source>
        <translation>Nella cartella c’è già un file chiamato %1. Rinominalo o spostalo e riprova.</translation>
    </message>
    <message>
        <source>That rename is no longer in the history.</source>
        <translation>Quella rinomina non è più nella cronologia.</translation>
    </message>
    <message>
        <source>These files are already back to the names they had before this rename.</source>
        <translation>Questi file hanno già i nomi che avevano prima di questa rinomina.</translation>
    </message>
    <message>
        <source>Give the new names with a template or a preset.</source>
        <translation>Indica i nuovi nomi con un modello o un preset.</translation>
    </message>
    <message>
        <source>“%1” isn’t a time zone (try Europe/Rome or UTC).</source>
        <translation>“%1” non è un fuso orario (prova Europe/Rome o UTC).</translation>
    </message>
    <message>
        <source>Couldn’t read the presets.</source>
        <translation>Impossibile leggere i preset.</translation>
    </message>
    <message>
        <source>There’s no preset named %1.</source>
        <translation>Non c’è nessun preset chiamato %1.</translation>
    </message>
    <message>
        <source>There’s no rename %1 in the history.</source>
        <translation>Nella cronologia non c’è nessuna rinomina %1.</translation>
    </message>
    <message>
        <source>%1 names more than one rename; give more of its id.</source>
        <translation>%1 indica più di una rinomina: scrivi una parte più lunga del suo identificativo.</translation>
    </message>
    <message>
        <source>%1 doesn’t exist.</source>
        <translation>%1 non esiste.</translation>
    </message>
    <message>
        <source>%1 isn’t a file or a folder that can be renamed.</source>
        <translation>%1 non è un file o una cartella che si possa rinominare.</translation>
    </message>
    <message>
        <source>Stopped: nothing was renamed.</source>
        <translation>Interrotto: non è stato rinominato niente.</translation>
    </message>
    <message>
        <source>%1: This file’s name can’t be read as text, so it won’t be renamed</source>
        <translation>%1: il nome di questo file non si può leggere come testo, quindi non verrà rinominato</translation>
    </message>
    <message>
        <source>A rename was interrupted; its file is back at the name it had before it.</source>
        <translation>Una rinomina è stata interrotta; il suo file ha di nuovo il nome che aveva prima.</translation>
    </message>
    <message>
        <source>A rename was interrupted; its %1 files are back at the names they had before it.</source>
        <translation>Una rinomina è stata interrotta; i suoi %1 file hanno di nuovo i nomi che avevano prima.</translation>
    </message>
    <message>
        <source>A rename was interrupted and not every file could be put back (%1 of %2 are back). Another try is made at the next start.</source>
        <translation>Una rinomina è stata interrotta e non tutti i file sono stati rimessi a posto (%1 su %2). Al prossimo avvio si riproverà.</translation>
    </message>
    <message>
        <source>%1 can’t be found.</source>
        <translation>Impossibile trovare %1.</translation>
    </message>
    <message>
        <source>%1 is still called %2.</source>
        <translation>%1 si chiama ancora %2.</translation>
    </message>
    <message>
        <source>The record of an interrupted rename can’t be read: %1.</source>
        <translation>Impossibile leggere la registrazione di una rinomina interrotta: %1.</translation>
    </message>
    <message>
        <source>Drop a folder or some files.</source>
        <translation>Trascina una cartella o alcuni file.</translation>
    </message>
    <message>
        <source>Couldn’t open the folder %1.</source>
        <translation>Impossibile aprire la cartella %1.</translation>
    </message>
    <message>
        <source>To see all the photos in %1, let Tessane Rename open the folder.</source>
        <translation>Per vedere tutte le foto in %1, permetti a Tessane Rename di aprire la cartella.</translation>
    </message>
    <message>
        <source>There’s nothing to rename.</source>
        <translation>Non c’è niente da rinominare.</translation>
    </message>
    <message>
        <source>Fix the errors before renaming.</source>
        <translation>Correggi gli errori prima di rinominare.</translation>
    </message>
    <message>
        <source>There’s nothing to undo.</source>
        <translation>Non c’è niente da annullare.</translation>
    </message>
    <message>
        <source>These files already have their original names.</source>
        <translation>Questi file hanno già i loro nomi originali.</translation>
    </message>
    <message>
        <source>Add the folder to the list to go back.</source>
        <translation>Aggiungi la cartella all’elenco per tornare indietro.</translation>
    </message>
    <message>
        <source>The files were renamed, but the history couldn’t be saved (is the disk full?). Until it can be, their batch is kept aside: the next start puts the files back to their names.</source>
        <translation>I file sono stati rinominati, ma non è stato possibile salvare la cronologia (il disco è pieno?). Finché non si potrà, il loro gruppo è tenuto da parte: al prossimo avvio i file riavranno i loro nomi.</translation>
    </message>
    <message>
        <source>%1 isn’t a table of camera bodies.</source>
        <translation>%1 non è una tabella di corpi macchina.</translation>
    </message>
    <message>
        <source>No file was changed</source>
        <translation>Nessun file è stato modificato</translation>
    </message>
    <message>
        <source>Some files couldn’t go back to their names</source>
        <translation>Alcuni file non sono potuti tornare ai loro nomi</translation>
    </message>
    <message>
        <source>No such file or directory</source>
        <translation>File o cartella inesistente</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>Permesso negato</translation>
    </message>
    <message>
        <source>Operation not permitted</source>
        <translation>Operazione non consentita</translation>
    </message>
    <message>
        <source>File exists</source>
        <translation>Il file esiste già</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>Spazio esaurito sul disco</translation>
    </message>
    <message>
        <source>Disk quota exceeded</source>
        <translation>Quota del disco superata</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>Disco di sola lettura</translation>
    </message>
    <message>
        <source>Device or resource busy</source>
        <translation>Dispositivo o risorsa occupata</translation>
    </message>
    <message>
        <source>Input/output error</source>
        <translation>Errore di lettura o scrittura sul disco</translation>
    </message>
    <message>
        <source>Not a directory</source>
        <translation>Non è una cartella</translation>
    </message>
    <message>
        <source>Is a directory</source>
        <translation>È una cartella</translation>
    </message>
    <message>
        <source>Directory not empty</source>
        <translation>La cartella non è vuota</translation>
    </message>
    <message>
        <source>File name too long</source>
        <translation>Nome del file troppo lungo</translation>
    </message>
    <message>
        <source>Invalid cross-device link</source>
        <translation>Collegamento tra dischi diversi non valido</translation>
    </message>
    <message>
        <source>Too many open files</source>
        <translation>Troppi file aperti</translation>
    </message>
    <message>
        <source>%1 was already in time</source>
        <translation>%1 era già all’ora giusta</translation>
    </message>
    <message>
        <source>%1 clock: %2</source>
        <translation>Orologio di %1: %2</translation>
    </message>
    <message>
        <source>The difference goes in Settings › Camera Bodies, where you can change it. The files aren’t changed.</source>
        <translation>La differenza va in Impostazioni › Corpi macchina, dove puoi cambiarla. I file non vengono modificati.</translation>
    </message>
    <message>
        <source>Tessane Rename %1 is available. You have %2.</source>
        <translation>È disponibile Tessane Rename %1. Tu hai la %2.</translation>
    </message>
    <message>
        <source>Tessane Rename %1 is the newest version.</source>
        <translation>Tessane Rename %1 è la versione più recente.</translation>
    </message>
    <message>
        <source>Couldn’t check for updates: %1</source>
        <translation>Non è stato possibile cercare aggiornamenti: %1</translation>
    </message>
    <message>
        <source>the server took too long to answer</source>
        <translation>il server ha impiegato troppo a rispondere</translation>
    </message>
    <message>
        <source>the update information can’t be read</source>
        <translation>le informazioni sull’aggiornamento non sono leggibili</translation>
    </message>
    <message>
        <source>the disk is read-only (a memory card’s lock switch, or a disk mounted read-only)</source>
        <translation>il disco è di sola lettura (la levetta di blocco di una scheda di memoria, o un disco montato in sola lettura)</translation>
    </message>
    <message>
        <source>you don’t have permission to change names in this folder</source>
        <translation>non hai il permesso di cambiare i nomi in questa cartella</translation>
    </message>
    <message>
        <source>the file is locked against changes (immutable, or owned by another user)</source>
        <translation>il file è bloccato contro le modifiche (immutabile, o di un altro utente)</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>il disco è pieno</translation>
    </message>
    <message>
        <source>the new name is too long for this disk</source>
        <translation>il nuovo nome è troppo lungo per questo disco</translation>
    </message>
    <message>
        <source>Can’t be renamed: %1</source>
        <translation>Non si può rinominare: %1</translation>
    </message>
    <message>
        <source>Couldn’t rename %1: %2. Nothing was changed.</source>
        <translation>Impossibile rinominare %1: %2. Non è stato cambiato nulla.</translation>
    </message>
    <message>
        <source>The shooting data is still being read: Rename waits until every date is in.</source>
        <translation>I dati di scatto sono ancora in lettura: Rinomina attende che ogni data sia pronta.</translation>
    </message>
    <message>
        <source>Rename 1 file</source>
        <translation>Rinomina 1 file</translation>
    </message>
    <message>
        <source>Rename %1 files</source>
        <translation>Rinomina %1 file</translation>
    </message>
    <message>
        <source>1 shot leaves a file out of the batch</source>
        <translation>1 scatto lascia un file fuori dal gruppo</translation>
    </message>
    <message>
        <source>%1 shots leave files out of the batch</source>
        <translation>%1 scatti lasciano file fuori dal gruppo</translation>
    </message>
    <message>
        <source>Couldn’t move %1 to the Trash: %2</source>
        <translation>Impossibile spostare %1 nel cestino: %2</translation>
    </message>
    <message>
        <source>the update information isn’t signed with this version’s key, so it was ignored</source>
        <translation>le informazioni sull’aggiornamento non sono firmate con la chiave di questa versione, perciò sono state ignorate</translation>
    </message>
    <message>
        <source>The name can’t start or end with a space</source>
        <translation>Il nome non può iniziare o finire con uno spazio</translation>
    </message>
</context>
<context>
    <name>PresetLibrary</name>
    <message>
        <source>Couldn’t read the presets.</source>
        <translation>Impossibile leggere i preset.</translation>
    </message>
    <message>
        <source>Couldn’t save the preset “%1”: %2</source>
        <translation type="vanished">Impossibile salvare il preset “%1”: %2</translation>
    </message>
    <message>
        <source>Couldn’t move “%1” to the Trash: %2</source>
        <translation type="vanished">Impossibile spostare “%1” nel cestino: %2</translation>
    </message>
</context>
<context>
    <name>RuleKind</name>
    <message>
        <source>New name</source>
        <translation>Nuovo nome</translation>
    </message>
    <message>
        <source>Counter</source>
        <translation>Contatore</translation>
    </message>
    <message>
        <source>Add text</source>
        <translation>Aggiungi testo</translation>
    </message>
    <message>
        <source>Replace text</source>
        <translation>Sostituisci testo</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Rimuovi</translation>
    </message>
    <message>
        <source>Move a block</source>
        <translation>Sposta un blocco</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>Espressione regolare</translation>
    </message>
    <message>
        <source>Change case</source>
        <translation>Maiuscole e minuscole</translation>
    </message>
    <message>
        <source>Clean up</source>
        <translation>Pulizia</translation>
    </message>
    <message>
        <source>Extension</source>
        <translation>Estensione</translation>
    </message>
    <message>
        <source>Advanced</source>
        <translation>Avanzato</translation>
    </message>
    <message>
        <source>Build</source>
        <translation>Componi</translation>
    </message>
    <message>
        <source>Modify</source>
        <translation>Modifica</translation>
    </message>
    <message>
        <source>Tidy</source>
        <translation>Rifinisci</translation>
    </message>
    <message>
        <source>A new name from date, body, text, counter and metadata</source>
        <translation>Un nuovo nome da data, corpo macchina, testo, contatore e metadati</translation>
    </message>
    <message>
        <source>Made with an earlier version or by hand: you can turn it on or off</source>
        <translation>Creato con una versione precedente o a mano: puoi attivarlo o disattivarlo</translation>
    </message>
    <message>
        <source>Extra spaces</source>
        <translation>Spazi in più</translation>
    </message>
    <message>
        <source>Accents (è → e)</source>
        <translation>Accenti (è → e)</translation>
    </message>
    <message>
        <source>Characters not allowed (/ :)</source>
        <translation>Caratteri non ammessi (/ :)</translation>
    </message>
    <message>
        <source>Emoji</source>
        <translation>Emoji</translation>
    </message>
</context>
<context>
    <name>RuleScope</name>
    <message>
        <source>All files</source>
        <translation>Tutti i file</translation>
    </message>
    <message>
        <source>RAW files</source>
        <translation>File RAW</translation>
    </message>
    <message>
        <source>JPEG files</source>
        <translation>File JPEG</translation>
    </message>
    <message>
        <source>Videos</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>Camera body “%1”</source>
        <translation>Corpo macchina “%1”</translation>
    </message>
    <message>
        <source>Names containing “%1”</source>
        <translation>Nomi che contengono “%1”</translation>
    </message>
</context>
<context>
    <name>UpdateNotice</name>
    <message>
        <source>Check for Updates</source>
        <translation>Cerca aggiornamenti</translation>
    </message>
    <message>
        <source>Open the Download Page</source>
        <translation>Apri la pagina di download</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Più tardi</translation>
    </message>
</context>
<context>
    <name>tessane::AppWindows</name>
    <message>
        <source>About Tessane Rename</source>
        <translation>Informazioni su Tessane Rename</translation>
    </message>
    <message>
        <source>Tessane Rename %1 (build %2)</source>
        <translation>Tessane Rename %1 (build %2)</translation>
    </message>
    <message>
        <source>New names for photos, videos and their sidecars, built from the shooting data, previewed, applied safely and undoable.</source>
        <translation>Nomi nuovi per foto, video e i loro file sidecar, costruiti dai dati di scatto, mostrati in anteprima, applicati in sicurezza e annullabili.</translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or any later version (%1). It comes with absolutely no warranty.</source>
        <translation>Software libero sotto la GNU General Public License, versione 3 o qualsiasi versione successiva (%1). Non ha alcuna garanzia.</translation>
    </message>
</context>
<context>
    <name>tessane::BodiesPane</name>
    <message>
        <source>Give each camera a short tag for {body}, and line up a clock that was wrong. The times in the names are corrected; the files aren’t changed.</source>
        <translation>Dai a ogni fotocamera una breve etichetta per {corpo} e rimetti in riga un orologio sbagliato. Gli orari nei nomi vengono corretti; i file non vengono modificati.</translation>
    </message>
    <message>
        <source>Camera bodies</source>
        <translation>Corpi macchina</translation>
    </message>
    <message>
        <source>Serial number or model</source>
        <translation>Numero di serie o modello</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>Etichetta</translation>
    </message>
    <message>
        <source>Clock offset</source>
        <translation>Scarto dell’orologio</translation>
    </message>
    <message>
        <source>Clock offset: what to add to the camera’s times, as +h:mm:ss. “+0:02:00” means its clock was 2 minutes behind.</source>
        <translation>Scarto dell’orologio: quanto aggiungere agli orari della fotocamera, come +h:mm:ss. “+0:02:00” vuol dire che il suo orologio era indietro di 2 minuti.</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Aggiungi</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Rimuovi</translation>
    </message>
    <message>
        <source>&amp;Import…</source>
        <translation>&amp;Importa…</translation>
    </message>
    <message>
        <source>Imported rows are added; for the same body the imported one wins.</source>
        <translation>Le righe importate si aggiungono; per lo stesso corpo vale quella importata.</translation>
    </message>
    <message>
        <source>Import Camera Bodies</source>
        <translation>Importa i corpi macchina</translation>
    </message>
    <message>
        <source>Camera bodies (*.json)</source>
        <translation>Corpi macchina (*.json)</translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation>&amp;Esporta…</translation>
    </message>
    <message>
        <source>Export Camera Bodies</source>
        <translation>Esporta i corpi macchina</translation>
    </message>
    <message>
        <source>“%1” isn’t a clock offset. Write it as +h:mm:ss, such as +0:02:00 for a clock 2 minutes behind, or -1:00:00 for one an hour ahead.</source>
        <translation>“%1” non è uno scarto d’orologio. Scrivilo come +h:mm:ss, per esempio +0:02:00 per un orologio indietro di 2 minuti, o -1:00:00 per uno avanti di un’ora.</translation>
    </message>
    <message>
        <source>A tag can’t hold “/”, “:” or control characters.</source>
        <translation>Un’etichetta non può contenere “/”, “:” o caratteri di controllo.</translation>
    </message>
    <message>
        <source>Add from open files (%1)</source>
        <translation>Aggiungi dai file aperti (%1)</translation>
    </message>
</context>
<context>
    <name>tessane::ChangeEditor</name>
    <message>
        <source>First</source>
        <translation>La prima</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>L’ultima</translation>
    </message>
    <message>
        <source>Every</source>
        <translation>Tutte</translation>
    </message>
    <message>
        <source>UPPER CASE</source>
        <translation>MAIUSCOLE</translation>
    </message>
    <message>
        <source>lower case</source>
        <translation>minuscole</translation>
    </message>
    <message>
        <source>Title Case</source>
        <translation>Iniziali Maiuscole</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>Distingui maiuscole e minuscole</translation>
    </message>
    <message>
        <source>Which one</source>
        <translation>Quale</translation>
    </message>
    <message>
        <source>Blocks are the parts of the name between separators; -1 is the last</source>
        <translation>I blocchi sono le parti del nome fra i separatori; -1 è l’ultimo</translation>
    </message>
    <message>
        <source>Pattern:</source>
        <translation>Schema:</translation>
    </message>
    <message>
        <source>Pattern</source>
        <translation>Schema</translation>
    </message>
    <message>
        <source>Start at:</source>
        <translation>Parti da:</translation>
    </message>
    <message>
        <source>Start at</source>
        <translation>Parti da</translation>
    </message>
    <message>
        <source>Step:</source>
        <translation>Passo:</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Passo</translation>
    </message>
    <message>
        <source>Digits:</source>
        <translation>Cifre:</translation>
    </message>
    <message>
        <source>Digits</source>
        <translation>Cifre</translation>
    </message>
    <message>
        <source>Start again:</source>
        <translation>Ricomincia:</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Mai</translation>
    </message>
    <message>
        <source>In each folder</source>
        <translation>In ogni cartella</translation>
    </message>
    <message>
        <source>On each day</source>
        <translation>Ogni giorno</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Ricomincia</translation>
    </message>
    <message>
        <source>Put it:</source>
        <translation>Mettilo:</translation>
    </message>
    <message>
        <source>At the end</source>
        <translation>Alla fine</translation>
    </message>
    <message>
        <source>At the start</source>
        <translation>All’inizio</translation>
    </message>
    <message>
        <source>Put it</source>
        <translation>Mettilo</translation>
    </message>
    <message>
        <source>Text:</source>
        <translation>Testo:</translation>
    </message>
    <message>
        <source>Text to add</source>
        <translation>Testo da aggiungere</translation>
    </message>
    <message>
        <source>Where:</source>
        <translation>Dove:</translation>
    </message>
    <message>
        <source>After some characters</source>
        <translation>Dopo alcuni caratteri</translation>
    </message>
    <message>
        <source>Before a text</source>
        <translation>Prima di un testo</translation>
    </message>
    <message>
        <source>After a text</source>
        <translation>Dopo un testo</translation>
    </message>
    <message>
        <source>Where to add it</source>
        <translation>Dove aggiungerlo</translation>
    </message>
    <message>
        <source>Characters:</source>
        <translation>Caratteri:</translation>
    </message>
    <message>
        <source>Characters before it</source>
        <translation>Caratteri prima</translation>
    </message>
    <message>
        <source>The text:</source>
        <translation>Il testo:</translation>
    </message>
    <message>
        <source>Text to find</source>
        <translation>Testo da cercare</translation>
    </message>
    <message>
        <source>Find:</source>
        <translation>Cerca:</translation>
    </message>
    <message>
        <source>Replace with:</source>
        <translation>Sostituisci con:</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>Sostituisci con</translation>
    </message>
    <message>
        <source>Remove:</source>
        <translation>Togli:</translation>
    </message>
    <message>
        <source>A text</source>
        <translation>Un testo</translation>
    </message>
    <message>
        <source>A block</source>
        <translation>Un blocco</translation>
    </message>
    <message>
        <source>Some characters</source>
        <translation>Alcuni caratteri</translation>
    </message>
    <message>
        <source>Everything before a text</source>
        <translation>Tutto prima di un testo</translation>
    </message>
    <message>
        <source>Everything after a text</source>
        <translation>Tutto dopo un testo</translation>
    </message>
    <message>
        <source>Everything between two texts</source>
        <translation>Tutto fra due testi</translation>
    </message>
    <message>
        <source>What to remove</source>
        <translation>Che cosa togliere</translation>
    </message>
    <message>
        <source>Text to remove</source>
        <translation>Testo da togliere</translation>
    </message>
    <message>
        <source>Block:</source>
        <translation>Blocco:</translation>
    </message>
    <message>
        <source>Block to remove</source>
        <translation>Blocco da togliere</translation>
    </message>
    <message>
        <source>From character:</source>
        <translation>Dal carattere:</translation>
    </message>
    <message>
        <source>From character</source>
        <translation>Dal carattere</translation>
    </message>
    <message>
        <source>How many:</source>
        <translation>Quanti:</translation>
    </message>
    <message>
        <source>How many characters</source>
        <translation>Quanti caratteri</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>Da:</translation>
    </message>
    <message>
        <source>Text it starts at</source>
        <translation>Testo da cui parte</translation>
    </message>
    <message>
        <source>To:</source>
        <translation>A:</translation>
    </message>
    <message>
        <source>Text it ends at</source>
        <translation>Testo a cui finisce</translation>
    </message>
    <message>
        <source>Remove the two texts too</source>
        <translation>Togli anche i due testi</translation>
    </message>
    <message>
        <source>Remove the text too</source>
        <translation>Togli anche il testo</translation>
    </message>
    <message>
        <source>Block to move</source>
        <translation>Blocco da spostare</translation>
    </message>
    <message>
        <source>To place:</source>
        <translation>Al posto:</translation>
    </message>
    <message>
        <source>Place to move it to</source>
        <translation>Posto in cui spostarlo</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>Espressione regolare</translation>
    </message>
    <message>
        <source>IMG_(\d+)</source>
        <translation>IMG_(\d+)</translation>
    </message>
    <message>
        <source>$1 is the first group</source>
        <translation>$1 è il primo gruppo</translation>
    </message>
    <message>
        <source>Which matches</source>
        <translation>Quali corrispondenze</translation>
    </message>
    <message>
        <source>Matches:</source>
        <translation>Corrispondenze:</translation>
    </message>
    <message>
        <source>Case:</source>
        <translation>Maiuscole:</translation>
    </message>
    <message>
        <source>Case</source>
        <translation>Maiuscole e minuscole</translation>
    </message>
    <message>
        <source>Clean up:</source>
        <translation>Sistema:</translation>
    </message>
    <message>
        <source>What to clean up</source>
        <translation>Che cosa sistemare</translation>
    </message>
    <message>
        <source>Put instead:</source>
        <translation>Metti al suo posto:</translation>
    </message>
    <message>
        <source>Put instead</source>
        <translation>Metti al suo posto</translation>
    </message>
    <message>
        <source>Extension:</source>
        <translation>Estensione:</translation>
    </message>
    <message>
        <source>Change its case</source>
        <translation>Cambiane maiuscole e minuscole</translation>
    </message>
    <message>
        <source>Set it to</source>
        <translation>Impostala a</translation>
    </message>
    <message>
        <source>What to do with the extension</source>
        <translation>Che cosa fare dell’estensione</translation>
    </message>
    <message>
        <source>New extension:</source>
        <translation>Nuova estensione:</translation>
    </message>
    <message>
        <source>New extension</source>
        <translation>Nuova estensione</translation>
    </message>
</context>
<context>
    <name>tessane::ChangesPanel</name>
    <message>
        <source>Save Preset As</source>
        <translation>Salva preset come</translation>
    </message>
    <message>
        <source>Name of the preset:</source>
        <translation>Nome del preset:</translation>
    </message>
    <message>
        <source>Changes</source>
        <translation>Ritocchi</translation>
    </message>
    <message>
        <source>Changes are applied from top to bottom. You can turn one off without deleting it, move it up or down and duplicate it (%1)</source>
        <translation>I ritocchi si applicano dall’alto in basso. Puoi disattivarne uno senza eliminarlo, spostarlo su o giù e duplicarlo (%1)</translation>
    </message>
    <message>
        <source>Add a Change</source>
        <translation>Aggiungi un ritocco</translation>
    </message>
    <message>
        <source>Add a change</source>
        <translation>Aggiungi un ritocco</translation>
    </message>
    <message>
        <source>Presets</source>
        <translation>Preset</translation>
    </message>
    <message>
        <source>A preset keeps the name and the changes you set up, to use them again on the next shoot.</source>
        <translation>Un preset conserva il nome e i ritocchi che hai preparato, per usarli di nuovo al prossimo servizio.</translation>
    </message>
    <message>
        <source>Apply To</source>
        <translation>Applica a</translation>
    </message>
    <message>
        <source>Delete Change</source>
        <translation>Elimina il ritocco</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplica</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Elimina</translation>
    </message>
    <message>
        <source>Files this change applies to</source>
        <translation>File a cui si applica questo ritocco</translation>
    </message>
    <message>
        <source>Text in the name</source>
        <translation>Testo nel nome</translation>
    </message>
    <message>
        <source>Only names containing</source>
        <translation>Solo i nomi che contengono</translation>
    </message>
    <message>
        <source>Applies to:</source>
        <translation>Si applica a:</translation>
    </message>
    <message>
        <source>Changes are applied from top to bottom, after the new name. Add one to replace, remove or move text, change the case or tidy the names up.</source>
        <translation>I ritocchi si applicano dall’alto in basso, dopo il nuovo nome. Aggiungine uno per sostituire, togliere o spostare testo, cambiare maiuscole e minuscole o sistemare i nomi.</translation>
    </message>
    <message>
        <source>%1 (modified)</source>
        <translation>%1 (modificato)</translation>
    </message>
    <message>
        <source>No presets yet</source>
        <translation>Ancora nessun preset</translation>
    </message>
    <message>
        <source>Camera Body</source>
        <translation>Corpo macchina</translation>
    </message>
    <message>
        <source>Names Containing…</source>
        <translation>Nomi che contengono…</translation>
    </message>
    <message>
        <source>Chosen files (set outside this window)</source>
        <translation>File scelti (impostati fuori da questa finestra)</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>  · chosen files</source>
        <translation>  · file scelti</translation>
    </message>
    <message>
        <source>  · %1</source>
        <translation>  · %1</translation>
    </message>
    <message>
        <source>Choose a change to edit it.</source>
        <translation>Scegli un ritocco per modificarlo.</translation>
    </message>
</context>
<context>
    <name>tessane::ChipBar</name>
    <message>
        <source>Piece %1 of the name: %2</source>
        <translation>Pezzo %1 del nome: %2</translation>
    </message>
    <message>
        <source>Ctrl+Left and Ctrl+Right move it, Delete removes it</source>
        <translation>Ctrl+Sinistra e Ctrl+Destra lo spostano, Canc lo toglie</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Togli %1</translation>
    </message>
    <message>
        <source>Pieces of the new name</source>
        <translation>Pezzi del nuovo nome</translation>
    </message>
    <message>
        <source>The name the camera gave the file comes first</source>
        <translation>Il nome dato dalla fotocamera viene per primo</translation>
    </message>
</context>
<context>
    <name>tessane::ClockSyncCard</name>
    <message>
        <source>Camera clocks</source>
        <translation>Orologi delle fotocamere</translation>
    </message>
    <message>
        <source>Line Up the Clocks</source>
        <translation>Metti in riga gli orologi</translation>
    </message>
    <message>
        <source>%1 has the right time (%2, %3)</source>
        <extracomment>A camera, the photo it took and when its clock says it was taken.</extracomment>
        <translation>%1 ha l’ora giusta (%2, %3)</translation>
    </message>
</context>
<context>
    <name>tessane::EmptyWindowPane</name>
    <message>
        <source>Drop a folder or some files here

or choose File ▸ Add Folder…</source>
        <translation>Trascina qui una cartella o alcuni file

o scegli File ▸ Aggiungi cartella…</translation>
    </message>
    <message>
        <source>Recent Folders</source>
        <translation>Cartelle recenti</translation>
    </message>
    <message>
        <source>Start from a Preset</source>
        <translation>Parti da un preset</translation>
    </message>
    <message>
        <source>Use the preset “%1”</source>
        <translation>Usa il preset “%1”</translation>
    </message>
</context>
<context>
    <name>tessane::FileListModel</name>
    <message>
        <source>Unchanged</source>
        <translation>Invariato</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Pronto</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Avviso</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Errore</translation>
    </message>
    <message>
        <source>Original name: %1</source>
        <translation>Nome originale: %1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nome</translation>
    </message>
    <message>
        <source>New Name</source>
        <translation>Nuovo nome</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>Body</source>
        <translation>Corpo</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Stato</translation>
    </message>
    <message>
        <source>Not ticked: left as it is</source>
        <translation>Non spuntato: resta com’è</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Cartella</translation>
    </message>
    <message>
        <source>Left alone: the name isn’t UTF-8</source>
        <translation>Lasciato com’è: il nome non è UTF-8</translation>
    </message>
</context>
<context>
    <name>tessane::GuideWindow</name>
    <message>
        <source>Build a name</source>
        <translation>Componi un nome</translation>
    </message>
    <message>
        <source>&lt;h2&gt;Build a name from pieces&lt;/h2&gt;&lt;p&gt;Drop a folder or a card&apos;s DCIM folder on the window. Then put together the new name from pieces: the date and time of the shot, the camera, the lens and exposure, the place and the people, your own text, and a counter.&lt;/p&gt;</source>
        <translation>&lt;h2&gt;Componi un nome a pezzi&lt;/h2&gt;&lt;p&gt;Trascina sulla finestra una cartella, o la cartella DCIM di una scheda. Poi metti insieme il nuovo nome a pezzi: la data e l’ora dello scatto, la fotocamera, l’obiettivo e l’esposizione, il luogo e le persone, un tuo testo e un contatore.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;Drag the pieces into the order you like and remove the ones you don&apos;t want. The separator between them is yours to choose. If you prefer typing, choose &lt;b&gt;Write by hand&lt;/b&gt;: variables are written in braces, such as &lt;code&gt;{date:yyyy-MM-dd}_{body}_{counter}&lt;/code&gt;, and the field completes their names.&lt;/p&gt;&lt;p&gt;Every file shows its new name before anything happens. Red means the name can&apos;t be used (two files would get the same name, for instance); amber is a warning, such as a photo without the data a piece asks for.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Trascina i pezzi nell’ordine che preferisci e togli quelli che non ti servono. Il separatore fra un pezzo e l’altro lo scegli tu. Se preferisci scrivere, scegli &lt;b&gt;Scrivi a mano&lt;/b&gt;: le variabili vanno fra graffe, come &lt;code&gt;{data:yyyy-MM-dd}_{corpo}_{contatore}&lt;/code&gt;, e il campo ne completa i nomi.&lt;/p&gt;&lt;p&gt;Ogni file mostra il suo nuovo nome prima che succeda qualcosa. Il rosso vuol dire che il nome non si può usare (per esempio due file avrebbero lo stesso nome); l’ambra è un avviso, come una foto senza il dato che un pezzo richiede.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Fotocamera</translation>
    </message>
    <message>
        <source>Counter</source>
        <translation>Contatore</translation>
    </message>
    <message>
        <source>Changes</source>
        <translation>Ritocchi</translation>
    </message>
    <message>
        <source>&lt;h2&gt;Fix up names with changes&lt;/h2&gt;&lt;p&gt;Changes work on the name one after the other, from the top: insert or remove text, replace words, move a block, change the case, clean up spaces, change the extension. Drag a change to reorder it (or Alt+Ctrl+Up and Down), turn it off to see the names without it, or duplicate it to start a similar one.&lt;/p&gt;</source>
        <translation>&lt;h2&gt;Rifinisci i nomi con i ritocchi&lt;/h2&gt;&lt;p&gt;I ritocchi lavorano sul nome uno dopo l’altro, dall’alto: inseriscono o tolgono testo, sostituiscono parole, spostano un blocco, cambiano maiuscole e minuscole, sistemano gli spazi, cambiano l’estensione. Trascina un ritocco per cambiarne il posto (o Alt+Ctrl+Su e Giù), disattivalo per vedere i nomi senza, o duplicalo per partire da uno simile.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;A change can act on all the files or only on some kinds, such as the videos. Start from the new name you built, or from the camera&apos;s original name.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Un ritocco può agire su tutti i file o solo su alcuni tipi, come i video. Parti dal nuovo nome che hai composto o dal nome originale della fotocamera.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Sostituisci</translation>
    </message>
    <message>
        <source>lower case</source>
        <translation>minuscole</translation>
    </message>
    <message>
        <source>Twins</source>
        <translation>Gemelli</translation>
    </message>
    <message>
        <source>&lt;h2&gt;Twins stay together&lt;/h2&gt;&lt;p&gt;The RAW file, its JPEG, its XMP sidecar and a video of the same shot share the name before the dot. Keep twins together, and they all get the RAW&apos;s new name, so your editing software still finds the sidecar beside its picture.&lt;/p&gt;</source>
        <translation>&lt;h2&gt;I gemelli restano insieme&lt;/h2&gt;&lt;p&gt;Il file RAW, il suo JPEG, il suo file XMP e un video dello stesso scatto hanno lo stesso nome prima del punto. Tieni insieme i gemelli e riceveranno tutti il nuovo nome del RAW: così il tuo programma di sviluppo trova ancora l’XMP accanto alla sua foto.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;Choose which twins follow the RAW in Settings › Names.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Scegli quali gemelli seguono il RAW in Impostazioni › Nomi.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Presets</source>
        <translation>Preset</translation>
    </message>
    <message>
        <source>&lt;h2&gt;Keep your recipes as presets&lt;/h2&gt;&lt;p&gt;When a name and its changes suit a kind of job, save them as a preset (File › Save Preset As…). Next time, load it from the preset menu or from the empty window and the names are ready. A dot beside the preset&apos;s name says you changed something since; Save Preset keeps the change.&lt;/p&gt;</source>
        <translation>&lt;h2&gt;Conserva le tue ricette come preset&lt;/h2&gt;&lt;p&gt;Quando un nome e i suoi ritocchi vanno bene per un tipo di lavoro, salvali come preset (File › Salva preset come…). La volta dopo caricalo dal menu dei preset o dalla finestra vuota e i nomi sono pronti. Un punto accanto al nome del preset dice che da allora hai cambiato qualcosa; Salva preset conserva la modifica.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Wedding</source>
        <translation>Matrimonio</translation>
    </message>
    <message>
        <source>Studio portraits</source>
        <translation>Ritratti in studio</translation>
    </message>
    <message>
        <source>Travel</source>
        <translation>Viaggio</translation>
    </message>
    <message>
        <source>Camera bodies</source>
        <translation>Corpi macchina</translation>
    </message>
    <message>
        <source>&lt;h2&gt;Camera bodies and their clocks&lt;/h2&gt;&lt;p&gt;Shooting with two cameras? Give each one a short tag in Settings › Camera Bodies, and the &lt;code&gt;{body}&lt;/code&gt; piece puts it in the names. If one camera&apos;s clock was wrong, its offset corrects the times in the names; the files themselves aren&apos;t changed.&lt;/p&gt;</source>
        <translation>&lt;h2&gt;I corpi macchina e i loro orologi&lt;/h2&gt;&lt;p&gt;Scatti con due fotocamere? Dai a ognuna una breve etichetta in Impostazioni › Corpi macchina e il pezzo &lt;code&gt;{corpo}&lt;/code&gt; la mette nei nomi. Se l’orologio di una fotocamera era sbagliato, il suo scarto corregge gli orari nei nomi; i file restano come sono.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;The quickest way: select two photos of the same moment from the two cameras, open the file panel, and let the clock card line them up.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Il modo più rapido: seleziona due foto dello stesso istante fatte dalle due fotocamere, apri il pannello del file e lascia che la scheda dell’orologio le metta in riga.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>the right time</source>
        <translation>l’ora giusta</translation>
    </message>
    <message>
        <source>Going back</source>
        <translation>Tornare indietro</translation>
    </message>
    <message>
        <source>&lt;h2&gt;Nothing is lost&lt;/h2&gt;&lt;p&gt;A rename never overwrites a file, and stops before touching anything when a name is taken. Changed your mind? &lt;b&gt;Restore Previous Names&lt;/b&gt; (Alt+Ctrl+Z) puts back the names from before the last rename; the History window (Ctrl+Y) goes back from any batch.&lt;/p&gt;</source>
        <translation>&lt;h2&gt;Non si perde nulla&lt;/h2&gt;&lt;p&gt;Una rinomina non sovrascrive mai un file e, se un nome è già preso, si ferma prima di toccare qualcosa. Hai cambiato idea? &lt;b&gt;Ripristina i nomi precedenti&lt;/b&gt; (Alt+Ctrl+Z) rimette i nomi di prima dell’ultima rinomina; la finestra Cronologia (Ctrl+Y) torna indietro da qualunque gruppo.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;&lt;b&gt;Restore Original Names&lt;/b&gt; brings back the names the camera gave, even after several renames, as long as the disk keeps them (see Settings › Files).&lt;/p&gt;</source>
        <translation>&lt;p&gt;&lt;b&gt;Ripristina i nomi originali&lt;/b&gt; riporta i nomi dati dalla fotocamera, anche dopo più rinomine, purché il disco li conservi (vedi Impostazioni › File).&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Rinomina</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Ripristina</translation>
    </message>
    <message>
        <source>Tessane Rename Guide</source>
        <translation>Guida di Tessane Rename</translation>
    </message>
    <message>
        <source>Topics</source>
        <translation>Argomenti</translation>
    </message>
    <message>
        <source>Guide</source>
        <translation>Guida</translation>
    </message>
</context>
<context>
    <name>tessane::HistoryWindow</name>
    <message>
        <source>History</source>
        <translation>Cronologia</translation>
    </message>
    <message>
        <source>Every rename you make shows up here, and you can go back to the names before it.</source>
        <translation>Ogni rinomina che fai compare qui, e puoi tornare ai nomi di prima.</translation>
    </message>
    <message>
        <source>Renames, newest first</source>
        <translation>Rinomine, dalla più recente</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Cartella</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>File</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Stato</translation>
    </message>
    <message>
        <source>Nothing renamed yet</source>
        <translation>Ancora nessuna rinomina</translation>
    </message>
    <message>
        <source>Clear History…</source>
        <translation>Cancella la cronologia…</translation>
    </message>
    <message>
        <source>Clear the history?</source>
        <translation>Cancellare la cronologia?</translation>
    </message>
    <message>
        <source>The files keep their names; you can no longer go back from here. Original names stay remembered in each file.</source>
        <translation>I file tengono i loro nomi; da qui non potrai più tornare indietro. I nomi originali restano conservati in ogni file.</translation>
    </message>
    <message>
        <source>Clear History</source>
        <translation>Cancella la cronologia</translation>
    </message>
    <message>
        <source>Go Back</source>
        <translation>Torna indietro</translation>
    </message>
    <message>
        <source>Put back the names these files had before this rename</source>
        <translation>Rimetti i nomi che questi file avevano prima di questa rinomina</translation>
    </message>
    <message>
        <source>Gone back</source>
        <translation>Annullata</translation>
    </message>
    <message>
        <source>Add the folder to the list to go back</source>
        <translation>Aggiungi la cartella all’elenco per tornare indietro</translation>
    </message>
    <message>
        <source>Renamed again since</source>
        <translation>File rinominati di nuovo in seguito</translation>
    </message>
    <message>
        <source>Renamed</source>
        <translation>Eseguita</translation>
    </message>
    <message>
        <source>Original names restored</source>
        <translation>Nomi originali ripristinati</translation>
    </message>
    <message>
        <source>%1, %2: %3 files</source>
        <translation>%1, %2: %3 file</translation>
    </message>
    <message>
        <source>Go back from the later renames too?</source>
        <translation>Tornare indietro anche dalle rinomine successive?</translation>
    </message>
    <message>
        <source>These files were renamed again since. To give them back the names they had before this rename, these later renames are gone back from first:</source>
        <translation>Questi file sono stati rinominati di nuovo in seguito. Per ridare loro i nomi che avevano prima di questa rinomina, si torna prima indietro da queste rinomine successive:</translation>
    </message>
    <message>
        <source>Go Back from All</source>
        <translation>Torna indietro da tutte</translation>
    </message>
</context>
<context>
    <name>tessane::InspectorPanel</name>
    <message>
        <source>File panel</source>
        <translation>Pannello del file</translation>
    </message>
    <message>
        <source>Names</source>
        <translation>Nomi</translation>
    </message>
    <message>
        <source>Problems</source>
        <translation>Problemi</translation>
    </message>
    <message>
        <source>How the new name is made</source>
        <translation>Come si forma il nuovo nome</translation>
    </message>
    <message>
        <source>Shooting data</source>
        <translation>Dati di scatto</translation>
    </message>
    <message>
        <source>Select a file to see its shooting data and how its new name is made.</source>
        <translation>Seleziona un file per vedere i suoi dati di scatto e come si forma il suo nuovo nome.</translation>
    </message>
    <message numerus="yes">
        <source>%n files selected</source>
        <translation>
            <numerusform>%n file selezionato</numerusform>
            <numerusform>%n file selezionati</numerusform>
        </translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Ora</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Nuovo</translation>
    </message>
    <message>
        <source>unchanged</source>
        <translation>invariato</translation>
    </message>
    <message>
        <source>being worked out…</source>
        <translation>in preparazione…</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>Originale</translation>
    </message>
    <message>
        <source>none kept yet</source>
        <translation>nessuno ancora conservato</translation>
    </message>
    <message>
        <source>Twin of</source>
        <translation>Gemello di</translation>
    </message>
    <message>
        <source>no change</source>
        <translation>nessun cambiamento</translation>
    </message>
    <message>
        <source>No shooting data in this file.</source>
        <translation>Nessun dato di scatto in questo file.</translation>
    </message>
    <message>
        <source>none: the file is left alone</source>
        <translation>nessuno: il file resta com’è</translation>
    </message>
</context>
<context>
    <name>tessane::MainWindow</name>
    <message>
        <source>Tessane Rename</source>
        <translation>Tessane Rename</translation>
    </message>
    <message>
        <source>Find a file</source>
        <translation>Trova un file</translation>
    </message>
    <message>
        <source>Show only the RAW files</source>
        <translation>Mostra solo i file RAW</translation>
    </message>
    <message>
        <source>Show only the images</source>
        <translation>Mostra solo le immagini</translation>
    </message>
    <message>
        <source>Show only the videos</source>
        <translation>Mostra solo i video</translation>
    </message>
    <message>
        <source>Show only the files with warnings</source>
        <translation>Mostra solo i file con avvisi</translation>
    </message>
    <message>
        <source>Show only the files with errors</source>
        <translation>Mostra solo i file con errori</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>File</translation>
    </message>
    <message>
        <source>All files</source>
        <translation>Tutti i file</translation>
    </message>
    <message>
        <source>Only ticked</source>
        <translation>Solo quelli spuntati</translation>
    </message>
    <message>
        <source>Rename all the files shown, or only the ones you tick</source>
        <translation>Rinomina tutti i file mostrati, o solo quelli che spunti</translation>
    </message>
    <message>
        <source>Files to rename</source>
        <translation>File da rinominare</translation>
    </message>
    <message>
        <source>Put back the names the files had before the last rename (%1)</source>
        <translation>Rimetti i nomi che i file avevano prima dell’ultima rinomina (%1)</translation>
    </message>
    <message>
        <source>Rename:</source>
        <translation>Rinomina:</translation>
    </message>
    <message>
        <source>Folders</source>
        <translation>Cartelle</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Chiudi</translation>
    </message>
    <message>
        <source>Add Folder</source>
        <translation>Aggiungi cartella</translation>
    </message>
    <message>
        <source>%1 — Tessane Rename</source>
        <translation>%1 — Tessane Rename</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Riprova</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>Mostra nel gestore file</translation>
    </message>
    <message>
        <source>RAW %1</source>
        <translation>RAW %1</translation>
    </message>
    <message>
        <source>Images %1</source>
        <translation>Immagini %1</translation>
    </message>
    <message>
        <source>Video %1</source>
        <translation>Video %1</translation>
    </message>
    <message>
        <source>Warnings %1</source>
        <translation>Avvisi %1</translation>
    </message>
    <message>
        <source>Errors %1</source>
        <translation>Errori %1</translation>
    </message>
    <message>
        <source>No folder</source>
        <translation>Nessuna cartella</translation>
    </message>
    <message>
        <source>No files</source>
        <translation>Nessun file</translation>
    </message>
    <message>
        <source>1 file</source>
        <translation>1 file</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 file</translation>
    </message>
    <message>
        <source>1 RAW</source>
        <translation>1 RAW</translation>
    </message>
    <message>
        <source>%1 RAW</source>
        <translation>%1 RAW</translation>
    </message>
    <message>
        <source>1 image</source>
        <translation>1 immagine</translation>
    </message>
    <message>
        <source>%1 images</source>
        <translation>%1 immagini</translation>
    </message>
    <message>
        <source>1 video</source>
        <translation>1 video</translation>
    </message>
    <message>
        <source>%1 videos</source>
        <translation>%1 video</translation>
    </message>
    <message>
        <source>1 camera</source>
        <translation>1 fotocamera</translation>
    </message>
    <message>
        <source>%1 cameras</source>
        <translation>%1 fotocamere</translation>
    </message>
    <message>
        <source>1 warning</source>
        <translation>1 avviso</translation>
    </message>
    <message>
        <source>%1 warnings</source>
        <translation>%1 avvisi</translation>
    </message>
    <message>
        <source>1 error</source>
        <translation>1 errore</translation>
    </message>
    <message>
        <source>%1 errors</source>
        <translation>%1 errori</translation>
    </message>
    <message>
        <source>Updating the new names…</source>
        <translation>Aggiornamento dei nuovi nomi…</translation>
    </message>
    <message>
        <source>Show as a list</source>
        <translation>Mostra come elenco</translation>
    </message>
    <message>
        <source>Show as a grid</source>
        <translation>Mostra come griglia</translation>
    </message>
    <message>
        <source>Tick the Whole Shots</source>
        <translation>Spunta gli scatti interi</translation>
    </message>
    <message>
        <source>Reading shooting data… %1 of %2 (Rename waits for it)</source>
        <translation>Lettura dei dati di scatto… %1 di %2 (Rinomina attende)</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>tessane::NameBuilderPanel</name>
    <message>
        <source>New name</source>
        <translation>Nuovo nome</translation>
    </message>
    <message>
        <source>Add a Piece</source>
        <translation>Aggiungi un pezzo</translation>
    </message>
    <message>
        <source>Add a piece to the name</source>
        <translation>Aggiungi un pezzo al nome</translation>
    </message>
    <message>
        <source>Add a value from the shooting data, your own text or a counter</source>
        <translation>Aggiungi un dato dello scatto, un tuo testo o un contatore</translation>
    </message>
    <message>
        <source>Your Text…</source>
        <translation>Un tuo testo…</translation>
    </message>
    <message>
        <source>Counter</source>
        <translation>Contatore</translation>
    </message>
    <message>
        <source>Your text, then Return</source>
        <translation>Il tuo testo, poi Invio</translation>
    </message>
    <message>
        <source>Text of the new piece</source>
        <translation>Testo del nuovo pezzo</translation>
    </message>
    <message>
        <source>Between pieces:</source>
        <translation>Fra i pezzi:</translation>
    </message>
    <message>
        <source>Separator between pieces</source>
        <translation>Separatore fra i pezzi</translation>
    </message>
    <message>
        <source>Keep the camera&apos;s name and add your pieces after it</source>
        <translation>Tieni il nome della fotocamera e aggiungi i tuoi pezzi dopo</translation>
    </message>
    <message>
        <source>Write by Hand</source>
        <translation>Scrivi a mano</translation>
    </message>
    <message>
        <source>Type the pattern, such as {date}_{body}_{counter}</source>
        <translation>Scrivi lo schema, come {data}_{corpo}_{contatore}</translation>
    </message>
    <message>
        <source>Write by hand</source>
        <translation>Scrivi a mano</translation>
    </message>
    <message>
        <source>Use the new name</source>
        <translation>Usa il nuovo nome</translation>
    </message>
    <message>
        <source>Turned off, the names stay as they are and only the changes apply</source>
        <translation>Se è disattivato, i nomi restano come sono e si applicano solo i ritocchi</translation>
    </message>
    <message>
        <source>Original name</source>
        <translation>Nome originale</translation>
    </message>
</context>
<context>
    <name>tessane::NameField</name>
    <message>
        <source>{date:yyyy-MM-dd}_{body}_{counter}</source>
        <translation>{data:yyyy-MM-dd}_{corpo}_{contatore}</translation>
    </message>
    <message>
        <source>Name template</source>
        <translation>Modello del nome</translation>
    </message>
    <message>
        <source>Write the new name by hand: text and variables in braces, such as {date}, {body}, {original} and {counter}</source>
        <translation>Scrivi il nuovo nome a mano: testo e variabili tra graffe, come {data}, {corpo}, {originale} e {contatore}</translation>
    </message>
    <message>
        <source>Variables</source>
        <translation>Variabili</translation>
    </message>
</context>
<context>
    <name>tessane::RecentFoldersList</name>
    <message>
        <source>Recent</source>
        <translation>Recenti</translation>
    </message>
    <message>
        <source>Recent folders</source>
        <translation>Cartelle recenti</translation>
    </message>
    <message>
        <source>Open Recent</source>
        <translation>Apri recenti</translation>
    </message>
    <message>
        <source>No recent folders</source>
        <translation>Nessuna cartella recente</translation>
    </message>
    <message>
        <source>Clear Menu</source>
        <translation>Svuota il menu</translation>
    </message>
</context>
<context>
    <name>tessane::ReportWindow</name>
    <message>
        <source>Report a Problem</source>
        <translation>Segnala un problema</translation>
    </message>
    <message>
        <source>Tessane Rename is in beta: tell what went wrong</source>
        <translation>Tessane Rename è in beta: racconta cosa è andato storto</translation>
    </message>
    <message>
        <source>&amp;What happened?</source>
        <translation>&amp;Che cosa è successo?</translation>
    </message>
    <message>
        <source>What happened</source>
        <translation>Che cosa è successo</translation>
    </message>
    <message>
        <source>What were you doing, what did you expect, and what happened instead?</source>
        <translation>Che cosa stavi facendo, che cosa ti aspettavi e che cosa è successo invece?</translation>
    </message>
    <message>
        <source>&amp;Include details: the error on screen, the folders, the rules, the last actions and what a sudden quit left</source>
        <translation>&amp;Includi i dettagli: l’errore sullo schermo, le cartelle, le regole, le ultime azioni e ciò che ha lasciato una chiusura improvvisa</translation>
    </message>
    <message>
        <source>Include details</source>
        <translation>Includi i dettagli</translation>
    </message>
    <message>
        <source>The report, as it will be sent:</source>
        <translation>La segnalazione, come verrà inviata:</translation>
    </message>
    <message>
        <source>The report, as it will be sent</source>
        <translation>La segnalazione, come verrà inviata</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Salva…</translation>
    </message>
    <message>
        <source>Se&amp;nd</source>
        <translation>&amp;Invia</translation>
    </message>
    <message>
        <source>Opens your mail app with the report attached; nothing leaves without you.</source>
        <translation>Apre il tuo programma di posta con la segnalazione allegata; nulla parte senza di te.</translation>
    </message>
    <message>
        <source>Save the Report</source>
        <translation>Salva la segnalazione</translation>
    </message>
    <message>
        <source>Plain text (*.txt)</source>
        <translation>Testo semplice (*.txt)</translation>
    </message>
    <message>
        <source>Report saved</source>
        <translation>Segnalazione salvata</translation>
    </message>
    <message>
        <source>Couldn’t save the report.</source>
        <translation>Non è stato possibile salvare la segnalazione.</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copia</translation>
    </message>
    <message>
        <source>Puts the whole report on the clipboard.</source>
        <translation>Copia l’intera segnalazione negli appunti.</translation>
    </message>
    <message>
        <source>Report copied</source>
        <translation>Segnalazione copiata</translation>
    </message>
    <message>
        <source>The report, as it will be saved or copied:</source>
        <translation>La segnalazione, come verrà salvata o copiata:</translation>
    </message>
    <message>
        <source>The report, as it will be saved or copied</source>
        <translation>La segnalazione, come verrà salvata o copiata</translation>
    </message>
</context>
<context>
    <name>tessane::SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Impostazioni</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Generali</translation>
    </message>
    <message>
        <source>Names</source>
        <translation>Nomi</translation>
    </message>
    <message>
        <source>Camera Bodies</source>
        <translation>Corpi macchina</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Aspetto</translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>Come il sistema</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Chiaro</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Scuro</translation>
    </message>
    <message>
        <source>&amp;Appearance:</source>
        <translation>&amp;Aspetto:</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Lingua</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>&amp;Lingua:</translation>
    </message>
    <message>
        <source>The new language is used the next time Tessane Rename starts.</source>
        <translation>La nuova lingua si usa dal prossimo avvio di Tessane Rename.</translation>
    </message>
    <message>
        <source>&amp;Resume the last session</source>
        <translation>&amp;Riprendi l’ultima sessione</translation>
    </message>
    <message>
        <source>At launch, reopen the folders and the name you were building. Turned off, the window starts empty.</source>
        <translation>All’avvio riapre le cartelle e il nome che stavi componendo. Se è disattivato, la finestra parte vuota.</translation>
    </message>
    <message>
        <source>After renaming, open the folder in the file manager with the renamed files selected</source>
        <translation>Dopo la rinomina, apri la cartella nel gestore file con i file rinominati selezionati</translation>
    </message>
    <message>
        <source>Show &amp;thumbnails in the file list</source>
        <translation>Mostra le &amp;miniature nell’elenco dei file</translation>
    </message>
    <message>
        <source>Check for &amp;updates once a day</source>
        <translation>Cerca &amp;aggiornamenti una volta al giorno</translation>
    </message>
    <message>
        <source>Only a short notice appears when a new version is out; nothing is downloaded without you.</source>
        <translation>Quando esce una nuova versione compare solo un breve avviso; nulla viene scaricato senza di te.</translation>
    </message>
    <message>
        <source>Date pattern</source>
        <translation>Schema della data</translation>
    </message>
    <message>
        <source>Time pattern</source>
        <translation>Schema dell’ora</translation>
    </message>
    <message>
        <source>“%1” can’t be written as a date: the last good pattern stays in use.</source>
        <translation>“%1” non si può scrivere come data: resta in uso l’ultimo schema valido.</translation>
    </message>
    <message>
        <source>Example: %1</source>
        <translation>Esempio: %1</translation>
    </message>
    <message>
        <source>&amp;Date:</source>
        <translation>&amp;Data:</translation>
    </message>
    <message>
        <source>&amp;Time:</source>
        <translation>&amp;Ora:</translation>
    </message>
    <message>
        <source>Patterns use yyyy for the year, MM month, dd day, HH hour, mm minutes, ss seconds. Text in &apos;single quotes&apos; stays as it is.</source>
        <translation>Gli schemi usano yyyy per l’anno, MM il mese, dd il giorno, HH l’ora, mm i minuti, ss i secondi. Il testo fra &apos;apici singoli&apos; resta com’è.</translation>
    </message>
    <message>
        <source>Separator between pieces</source>
        <translation>Separatore fra i pezzi</translation>
    </message>
    <message>
        <source>&amp;Separator:</source>
        <translation>&amp;Separatore:</translation>
    </message>
    <message>
        <source>Extensions</source>
        <translation>Estensioni</translation>
    </message>
    <message>
        <source>Keep as they are</source>
        <translation>Lasciale come sono</translation>
    </message>
    <message>
        <source>lower case (.jpg)</source>
        <translation>minuscole (.jpg)</translation>
    </message>
    <message>
        <source>UPPER CASE (.JPG)</source>
        <translation>MAIUSCOLE (.JPG)</translation>
    </message>
    <message>
        <source>E&amp;xtensions:</source>
        <translation>E&amp;stensioni:</translation>
    </message>
    <message>
        <source>Text for missing data</source>
        <translation>Testo per i dati mancanti</translation>
    </message>
    <message>
        <source>left out</source>
        <translation>omesso</translation>
    </message>
    <message>
        <source>Text for &amp;missing data:</source>
        <translation>Testo per i dati &amp;mancanti:</translation>
    </message>
    <message>
        <source>Used when a file doesn’t have the data a rule asks for, such as {lens} on a phone photo.</source>
        <translation>Si usa quando un file non ha il dato che una regola chiede, come {obiettivo} in una foto del telefono.</translation>
    </message>
    <message>
        <source>Two files with one name</source>
        <translation>Due file con lo stesso nome</translation>
    </message>
    <message>
        <source>Mark them as errors</source>
        <translation>Segnalali come errori</translation>
    </message>
    <message>
        <source>Add a number to the second</source>
        <translation>Aggiungi un numero al secondo</translation>
    </message>
    <message>
        <source>Two files, one &amp;name:</source>
        <translation>Due file, un solo &amp;nome:</translation>
    </message>
    <message>
        <source>Number in order of</source>
        <translation>Numera in ordine di</translation>
    </message>
    <message>
        <source>Number in &amp;order of:</source>
        <translation>Numera in &amp;ordine di:</translation>
    </message>
    <message>
        <source>JPEG and other &amp;images</source>
        <translation>JPEG e altre &amp;immagini</translation>
    </message>
    <message>
        <source>&amp;Videos</source>
        <translation>&amp;Video</translation>
    </message>
    <message>
        <source>&amp;XMP sidecars</source>
        <translation>File &amp;XMP</translation>
    </message>
    <message>
        <source>Files of one shot that share the name before the dot get the RAW’s new name.</source>
        <translation>I file di uno stesso scatto che hanno lo stesso nome prima del punto ricevono il nuovo nome del RAW.</translation>
    </message>
    <message>
        <source>Twins that follow the RAW:</source>
        <translation>Gemelli che seguono il RAW:</translation>
    </message>
    <message>
        <source>Counter starts at</source>
        <translation>Il contatore parte da</translation>
    </message>
    <message>
        <source>Counter digits</source>
        <translation>Cifre del contatore</translation>
    </message>
    <message>
        <source>starts at</source>
        <translation>parte da</translation>
    </message>
    <message>
        <source>&amp;digits</source>
        <translation>&amp;cifre</translation>
    </message>
    <message>
        <source>&amp;Counter:</source>
        <translation>&amp;Contatore:</translation>
    </message>
    <message>
        <source>%1, %2, %3…</source>
        <translation>%1, %2, %3…</translation>
    </message>
    <message>
        <source>Tessane Rename can keep the name the camera gave each file inside the file itself, as an extended attribute. Restore Original Names then works even after several renames. The picture and its metadata are never changed.</source>
        <translation type="vanished">Tessane Rename può conservare dentro ogni file, come attributo esteso, il nome che gli ha dato la fotocamera. Così Ripristina i nomi originali funziona anche dopo più rinomine. L’immagine e i suoi metadati non vengono mai modificati.</translation>
    </message>
    <message>
        <source>Keep the original name:</source>
        <translation type="vanished">Conserva il nome originale:</translation>
    </message>
    <message>
        <source>&amp;Always</source>
        <translation>&amp;Sempre</translation>
    </message>
    <message>
        <source>On every disk that accepts extended attributes.</source>
        <translation>Su ogni disco che accetta gli attributi estesi.</translation>
    </message>
    <message>
        <source>On disks that keep &amp;attributes natively</source>
        <translation>Sui dischi che conservano gli &amp;attributi in modo nativo</translation>
    </message>
    <message>
        <source>Linux disks (ext4, Btrfs, XFS, F2FS, ZFS) keep the name with the file. Memory cards, exchange drives and network shares (FAT, exFAT, NTFS, SMB, NFS) can lose it when the file is copied, so nothing is written there.</source>
        <translation type="vanished">I dischi Linux (ext4, Btrfs, XFS, F2FS, ZFS) conservano il nome insieme al file. Schede di memoria, dischi di scambio e cartelle di rete (FAT, exFAT, NTFS, SMB, NFS) possono perderlo quando il file viene copiato, perciò lì non si scrive nulla.</translation>
    </message>
    <message>
        <source>&amp;Never</source>
        <translation>&amp;Mai</translation>
    </message>
    <message>
        <source>Nothing is written. Restore Original Names still knows the names kept before.</source>
        <translation>Non si scrive nulla. Ripristina i nomi originali conosce ancora i nomi conservati prima.</translation>
    </message>
    <message>
        <source>Remember the original name in the files</source>
        <translation>Ricorda il nome originale nei file</translation>
    </message>
    <message>
        <source>Each renamed file keeps its camera name inside, as an extended attribute, for Restore Original Names; the picture and its metadata are never changed. Memory cards, drives shared with other systems (FAT, exFAT, NTFS) and network shares can lose it when a file is copied, so with “On disks that keep attributes natively” those files are left alone. History can always undo a rename, wherever the files are.</source>
        <translation>Ogni file rinominato conserva al suo interno il nome dato dalla fotocamera, come attributo esteso, per Ripristina i nomi originali; l’immagine e i suoi metadati non vengono mai modificati. Schede di memoria, dischi condivisi con altri sistemi (FAT, exFAT, NTFS) e cartelle di rete possono perderlo quando un file viene copiato, perciò con “Sui dischi che conservano gli attributi in modo nativo” quei file non vengono toccati. La cronologia può sempre annullare una rinomina, ovunque siano i file.</translation>
    </message>
    <message>
        <source>Linux disks (ext4, Btrfs, XFS, F2FS, ZFS) keep the name with the file; nothing is written on memory cards, exchange drives and network shares (FAT, exFAT, NTFS, SMB, NFS).</source>
        <translation>I dischi Linux (ext4, Btrfs, XFS, F2FS, ZFS) conservano il nome insieme al file; su schede di memoria, dischi di scambio e cartelle di rete (FAT, exFAT, NTFS, SMB, NFS) non si scrive nulla.</translation>
    </message>
</context>
</TS>
