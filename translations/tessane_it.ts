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
</context>
<context>
    <name>BetaReport</name>
    <message>
        <source>What happened</source>
        <translation>Che cosa è successo</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>(niente)</translation>
    </message>
    <message>
        <source>On screen</source>
        <translation>Sullo schermo</translation>
    </message>
    <message>
        <source>Rules</source>
        <translation>Regole</translation>
    </message>
    <message>
        <source>Diary</source>
        <translation>Diario</translation>
    </message>
    <message>
        <source>Crash</source>
        <translation>Arresto anomalo</translation>
    </message>
</context>
<context>
    <name>BetaReporter</name>
    <message>
        <source>(none)</source>
        <translation>(nessuno)</translation>
    </message>
    <message>
        <source>Error on screen: %1</source>
        <translation>Errore sullo schermo: %1</translation>
    </message>
    <message>
        <source>Folders in the list: %1</source>
        <translation>Cartelle nell’elenco: %1</translation>
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
        <source>Couldn’t rename %1. It may be in use by another app: close it and try again.</source>
        <translation>Impossibile rinominare %1. Forse è in uso da parte di un’altra app: chiudila e riprova.</translation>
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
</context>
<context>
    <name>PresetLibrary</name>
    <message>
        <source>Couldn’t read the presets.</source>
        <translation>Impossibile leggere i preset.</translation>
    </message>
    <message>
        <source>Couldn’t save the preset “%1”: %2</source>
        <translation>Impossibile salvare il preset “%1”: %2</translation>
    </message>
    <message>
        <source>Couldn’t move “%1” to the Trash: %2</source>
        <translation>Impossibile spostare “%1” nel cestino: %2</translation>
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
</context>
<context>
    <name>tessane::MainWindow</name>
    <message>
        <source>Tessane Rename</source>
        <translation>Tessane Rename</translation>
    </message>
    <message>
        <source>New name</source>
        <translation>Nuovo nome</translation>
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
        <source>Rename the files (%1)</source>
        <translation>Rinomina i file (%1)</translation>
    </message>
    <message>
        <source>Rename:</source>
        <translation>Rinomina:</translation>
    </message>
    <message>
        <source>Reading shooting data… %1 of %2</source>
        <translation>Lettura dei dati di scatto… %1 di %2</translation>
    </message>
    <message>
        <source>Folders</source>
        <translation>Cartelle</translation>
    </message>
    <message>
        <source>Drop a folder or some files here

or choose File ▸ Add Folder…</source>
        <translation>Trascina qui una cartella o alcuni file

oppure scegli File ▸ Aggiungi cartella…</translation>
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
</context>
</TS>
