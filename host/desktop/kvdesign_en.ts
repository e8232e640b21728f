<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="it">
<context>
    <name>Application</name>
    <message>
        <source>Errore sconosciuto</source>
        <translation>Unknown error</translation>
    </message>
</context>
<context>
    <name>ClassNames</name>
    <message>
        <source>Alias</source>
        <translation>Alias</translation>
    </message>
    <message>
        <source>Scorrimento di indici</source>
        <translation>Index browsing</translation>
    </message>
    <message>
        <source>Catalogo</source>
        <translation>Catalogue</translation>
    </message>
    <message>
        <source>Procedura di catalogo</source>
        <translation>Catalogue procedure</translation>
    </message>
    <message>
        <source>Comando</source>
        <translation>Command</translation>
    </message>
    <message>
        <source>Filtro</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Aiuto</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>Importazione</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>Procedura di importazione</source>
        <translation>Import procedure</translation>
    </message>
    <message>
        <source>Prestito</source>
        <translation>Loan</translation>
    </message>
    <message>
        <source>Client del prestito</source>
        <translation>Loan client</translation>
    </message>
    <message>
        <source>Menu del prestito</source>
        <translation>Loan menu</translation>
    </message>
    <message>
        <source>Posta</source>
        <translation>Mail</translation>
    </message>
    <message>
        <source>Gruppo di posta</source>
        <translation>Mail group</translation>
    </message>
    <message>
        <source>Pagine principali</source>
        <translation>Master pages</translation>
    </message>
    <message>
        <source>Membro</source>
        <translation>Member</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>Profilo di visualizzazione</source>
        <translation>Display profile</translation>
    </message>
    <message>
        <source>Ricerca</source>
        <translation>Query</translation>
    </message>
    <message>
        <source>Archivio di documenti</source>
        <translation>Document repository</translation>
    </message>
    <message>
        <source>Base di retrieval</source>
        <translation>Retrieval base</translation>
    </message>
    <message>
        <source>Operazioni tra insiemi</source>
        <translation>Set operations</translation>
    </message>
    <message>
        <source>Ordinamento</source>
        <translation>Sort table</translation>
    </message>
    <message>
        <source>Modulo di immissione</source>
        <translation>Entry form</translation>
    </message>
    <message>
        <source>Parole vuote</source>
        <translation>Stop words</translation>
    </message>
    <message>
        <source>Tabella di messaggi</source>
        <translation>String table</translation>
    </message>
    <message>
        <source>Tabella</source>
        <translation>Record table</translation>
    </message>
    <message>
        <source>Applicazione client</source>
        <translation>Client application</translation>
    </message>
    <message>
        <source>Client web</source>
        <translation>Web client</translation>
    </message>
    <message>
        <source>Server web</source>
        <translation>Web server</translation>
    </message>
</context>
<context>
    <name>QtPlatform</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&amp;Sì</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>&amp;Annulla</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>Cartella:</source>
        <translation>Folder:</translation>
    </message>
    <message>
        <source>&amp;Nome del file:</source>
        <translation>File &amp;name:</translation>
    </message>
    <message>
        <source>Tipo di file:</source>
        <translation>Files of type:</translation>
    </message>
    <message>
        <source>&amp;Salva</source>
        <translation>&amp;Save</translation>
    </message>
    <message>
        <source>&amp;Apri</source>
        <translation>&amp;Open</translation>
    </message>
    <message>
        <source>A&amp;nnulla</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>Il file %1 esiste già.
Sostituirlo?</source>
        <translation>The file %1 already exists.
Replace it?</translation>
    </message>
    <message>
        <source>&amp;Copia</source>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>C&amp;hiudi</source>
        <translation>C&amp;lose</translation>
    </message>
</context>
<context>
    <name>kv::desktop::BrowserWindow</name>
    <message>
        <source>Oggetti di configurazione</source>
        <translation>Configuration objects</translation>
    </message>
    <message>
        <source>&amp;Apri archivio...</source>
        <translation>&amp;Open store...</translation>
    </message>
    <message>
        <source>Lavora su un altro archivio</source>
        <translation>Work on another store</translation>
    </message>
    <message>
        <source>&amp;Nuovo archivio...</source>
        <translation>&amp;New store...</translation>
    </message>
    <message>
        <source>Crea un archivio vuoto</source>
        <translation>Make an empty store</translation>
    </message>
    <message>
        <source>A&amp;ggiorna</source>
        <translation>&amp;Refresh</translation>
    </message>
    <message>
        <source>Rilegge l&apos;elenco degli oggetti</source>
        <translation>Read the list of objects again</translation>
    </message>
    <message>
        <source>&amp;Esci</source>
        <translation>&amp;Quit</translation>
    </message>
    <message>
        <source>Chiude il programma</source>
        <translation>Close the program</translation>
    </message>
    <message>
        <source>&amp;Nuovo...</source>
        <translation>&amp;New...</translation>
    </message>
    <message>
        <source>Crea un oggetto vuoto</source>
        <translation>Make an empty object</translation>
    </message>
    <message>
        <source>&amp;Apri</source>
        <translation>&amp;Open</translation>
    </message>
    <message>
        <source>Apre l&apos;oggetto selezionato</source>
        <translation>Open the selected object</translation>
    </message>
    <message>
        <source>&amp;Copia con nome...</source>
        <translation>&amp;Copy as...</translation>
    </message>
    <message>
        <source>Crea un oggetto con il contenuto di quello selezionato</source>
        <translation>Make an object with the content of the selected one</translation>
    </message>
    <message>
        <source>&amp;Elimina...</source>
        <translation>&amp;Delete...</translation>
    </message>
    <message>
        <source>Elimina l&apos;oggetto selezionato</source>
        <translation>Delete the selected object</translation>
    </message>
    <message>
        <source>E&amp;sporta...</source>
        <translation>&amp;Export...</translation>
    </message>
    <message>
        <source>Scrive l&apos;oggetto selezionato in un file di testo</source>
        <translation>Write the selected object to a text file</translation>
    </message>
    <message>
        <source>&amp;Importa...</source>
        <translation>&amp;Import...</translation>
    </message>
    <message>
        <source>Legge l&apos;oggetto selezionato da un file di testo</source>
        <translation>Read the selected object from a text file</translation>
    </message>
    <message>
        <source>&amp;Cerca</source>
        <translation>&amp;Search</translation>
    </message>
    <message>
        <source>Cerca per classe, nome o descrizione</source>
        <translation>Search by class, name or description</translation>
    </message>
    <message>
        <source>&amp;Annulla la ricerca</source>
        <translation>&amp;Clear the search</translation>
    </message>
    <message>
        <source>Mostra di nuovo tutti gli oggetti</source>
        <translation>Show all objects again</translation>
    </message>
    <message>
        <source>&amp;Espandi tutto</source>
        <translation>&amp;Expand all</translation>
    </message>
    <message>
        <source>Mostra gli oggetti di tutte le classi</source>
        <translation>Show the objects of all classes</translation>
    </message>
    <message>
        <source>Mostra solo le classi</source>
        <translation>Show the classes only</translation>
    </message>
    <message>
        <source>&amp;Informazioni</source>
        <translation>&amp;About</translation>
    </message>
    <message>
        <source>Versione del programma</source>
        <translation>Version of the program</translation>
    </message>
    <message>
        <source>&amp;Archivio</source>
        <translation>&amp;Store</translation>
    </message>
    <message>
        <source>&amp;Oggetto</source>
        <translation>&amp;Object</translation>
    </message>
    <message>
        <source>&amp;Visualizza</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>&amp;?</source>
        <translation>&amp;?</translation>
    </message>
    <message>
        <source>Strumenti</source>
        <translation>Tools</translation>
    </message>
    <message>
        <source>Oggetti per classe</source>
        <translation>Objects by class</translation>
    </message>
    <message>
        <source>KvDesign %1
Progettazione degli oggetti di configurazione di un archivio bibliografico.</source>
        <translation>KvDesign %1
Design of the configuration objects of a bibliographic store.</translation>
    </message>
    <message>
        <source>Nessun archivio aperto.</source>
        <translation>No store is open.</translation>
    </message>
    <message>
        <source>Nessun oggetto: crearne uno con Oggetto, Nuovo, o aprire un altro archivio.</source>
        <translation>No objects: make one with Object, New, or open another store.</translation>
    </message>
    <message>
        <source>Nessun oggetto: nessuno corrisponde a «%1».</source>
        <translation>No objects: none matches “%1”.</translation>
    </message>
    <message>
        <source>Oggetti: %1</source>
        <translation>Objects: %1</translation>
    </message>
    <message>
        <source>Classi: %1</source>
        <translation>Classes: %1</translation>
    </message>
    <message>
        <source>Di classe sconosciuta: %1</source>
        <translation>Of an unknown class: %1</translation>
    </message>
    <message>
        <source>Oggetti di %1</source>
        <translation>Objects of %1</translation>
    </message>
    <message>
        <source>Apri archivio</source>
        <translation>Open store</translation>
    </message>
    <message>
        <source>Archivi (*.db)</source>
        <translation>Stores (*.db)</translation>
    </message>
    <message>
        <source>Tutti i file (*)</source>
        <translation>All files (*)</translation>
    </message>
    <message>
        <source>Nuovo archivio</source>
        <translation>New store</translation>
    </message>
    <message>
        <source>Il file %1 esiste già. Per lavorarci, scegliere Apri archivio.</source>
        <translation>The file %1 already exists. To work on it, choose Open store.</translation>
    </message>
    <message>
        <source>Nuovo oggetto</source>
        <translation>New object</translation>
    </message>
    <message>
        <source>Copia di %1</source>
        <translation>Copy of %1</translation>
    </message>
    <message>
        <source>Eliminare %1?</source>
        <translation>Delete %1?</translation>
    </message>
    <message>
        <source>e altri %1</source>
        <translation>and %1 more</translation>
    </message>
    <message>
        <source>%1 è usato da:</source>
        <translation>%1 is used by:</translation>
    </message>
    <message>
        <source>Eliminarlo ugualmente?</source>
        <translation>Delete it all the same?</translation>
    </message>
    <message>
        <source>Esporta %1</source>
        <translation>Export %1</translation>
    </message>
    <message>
        <source>File di testo (*.txt)</source>
        <translation>Text files (*.txt)</translation>
    </message>
    <message>
        <source>%1 esportato in %2</source>
        <translation>%1 exported to %2</translation>
    </message>
    <message>
        <source>Impossibile scrivere il file %1: %2</source>
        <translation>The file %1 cannot be written: %2</translation>
    </message>
    <message>
        <source>Importa in %1</source>
        <translation>Import into %1</translation>
    </message>
    <message>
        <source>Impossibile leggere il file %1: %2</source>
        <translation>The file %1 cannot be read: %2</translation>
    </message>
    <message>
        <source>Il file %1 non è testo UTF-8.</source>
        <translation>The file %1 is not UTF-8 text.</translation>
    </message>
    <message>
        <source>Sostituire il contenuto di %1 con il file %2?</source>
        <translation>Replace the content of %1 with the file %2?</translation>
    </message>
    <message>
        <source>Nulla è cambiato: gli oggetti della classe %1 non si leggono da un file.</source>
        <translation>Nothing has changed: objects of class %1 are not read from a file.</translation>
    </message>
    <message>
        <source>Co&amp;mprimi tutto</source>
        <translation>C&amp;ollapse all</translation>
    </message>
    <message>
        <source>%1 (illeggibile)</source>
        <translation>%1 (cannot be read)</translation>
    </message>
</context>
<context>
    <name>kv::desktop::ChangesDialog</name>
    <message>
        <source>Differenze, sezione per sezione</source>
        <translation>Differences, section by section</translation>
    </message>
    <message>
        <source>&amp;Chiudi</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>Un altro programma ha salvato questo oggetto dopo che è stato aperto.</source>
        <translation>Another program has saved this object since it was opened.</translation>
    </message>
    <message>
        <source>Le righe con «-» sono della versione salvata, quelle con «+» di questa finestra.</source>
        <translation>Lines with “-” are of the saved version, those with “+” of this window.</translation>
    </message>
    <message>
        <source>&amp;Prendi la versione salvata</source>
        <translation>&amp;Take the saved version</translation>
    </message>
    <message>
        <source>&amp;Mantieni la mia</source>
        <translation>&amp;Keep mine</translation>
    </message>
    <message>
        <source>&amp;Annulla</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>Oggetto salvato da altri</source>
        <translation>Object saved by others</translation>
    </message>
    <message>
        <source>tolta</source>
        <translation>removed</translation>
    </message>
    <message>
        <source>aggiunta</source>
        <translation>added</translation>
    </message>
    <message>
        <source>spostata</source>
        <translation>moved</translation>
    </message>
    <message>
        <source>modificata</source>
        <translation>changed</translation>
    </message>
    <message>
        <source>Nessuna differenza nel testo delle sezioni.</source>
        <translation>No differences in the text of the sections.</translation>
    </message>
    <message>
        <source>⋯ righe uguali: %1</source>
        <translation>⋯ equal lines: %1</translation>
    </message>
</context>
<context>
    <name>kv::desktop::DesignWindow</name>
    <message>
        <source>Versione %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Id %1</source>
        <translation>Id %1</translation>
    </message>
    <message>
        <source>Sezioni dell&apos;oggetto</source>
        <translation>Sections of the object</translation>
    </message>
    <message>
        <source>Cerca nell&apos;albero</source>
        <translation>Search in the tree</translation>
    </message>
    <message>
        <source>Testo della sezione</source>
        <translation>Text of the section</translation>
    </message>
    <message>
        <source>Messaggio</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>&amp;Salva</source>
        <translation>&amp;Save</translation>
    </message>
    <message>
        <source>&amp;Ricarica</source>
        <translation>&amp;Reload</translation>
    </message>
    <message>
        <source>&amp;Modifiche...</source>
        <translation>C&amp;hanges...</translation>
    </message>
    <message>
        <source>&amp;Chiudi</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>&amp;Applica il testo</source>
        <translation>&amp;Apply the text</translation>
    </message>
    <message>
        <source>A&amp;nnulla il testo</source>
        <translation>&amp;Revert the text</translation>
    </message>
    <message>
        <source>C&amp;ompleta</source>
        <translation>C&amp;omplete</translation>
    </message>
    <message>
        <source>Controllo &amp;sintassi</source>
        <translation>&amp;Syntax check</translation>
    </message>
    <message>
        <source>&amp;Copia</source>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>&amp;Taglia</source>
        <translation>Cu&amp;t</translation>
    </message>
    <message>
        <source>&amp;Incolla</source>
        <translation>&amp;Paste</translation>
    </message>
    <message>
        <source>&amp;Nuovo elemento</source>
        <translation>&amp;New element</translation>
    </message>
    <message>
        <source>&amp;Elimina</source>
        <translation>&amp;Delete</translation>
    </message>
    <message>
        <source>Elimina t&amp;utti</source>
        <translation>Delete a&amp;ll</translation>
    </message>
    <message>
        <source>Sposta &amp;su</source>
        <translation>Move &amp;up</translation>
    </message>
    <message>
        <source>Sposta &amp;giù</source>
        <translation>Move do&amp;wn</translation>
    </message>
    <message>
        <source>&amp;Proprietà</source>
        <translation>P&amp;roperties</translation>
    </message>
    <message>
        <source>&amp;Trova nell&apos;albero</source>
        <translation>&amp;Find in the tree</translation>
    </message>
    <message>
        <source>Trova &amp;successivo</source>
        <translation>Find &amp;next</translation>
    </message>
    <message>
        <source>Albero o t&amp;esto</source>
        <translation>&amp;Tree or text</translation>
    </message>
    <message>
        <source>&amp;Oggetto</source>
        <translation>&amp;Object</translation>
    </message>
    <message>
        <source>&amp;Modifica</source>
        <translation>&amp;Edit</translation>
    </message>
    <message>
        <source>&amp;Testo</source>
        <translation>&amp;Text</translation>
    </message>
    <message>
        <source>&amp;Vai</source>
        <translation>&amp;Go</translation>
    </message>
    <message>
        <source>Oggetto e testo</source>
        <translation>Object and text</translation>
    </message>
    <message>
        <source>Strumenti</source>
        <translation>Tools</translation>
    </message>
    <message>
        <source>&amp;Strumenti</source>
        <translation>Too&amp;ls</translation>
    </message>
    <message>
        <source>Errore</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Informazione</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>Riga %1: %2</source>
        <translation>Line %1: %2</translation>
    </message>
    <message>
        <source>Il testo della sezione &quot;%1&quot; non è stato applicato.</source>
        <translation>The text of the section &quot;%1&quot; has not been applied.</translation>
    </message>
    <message>
        <source>&amp;Applica</source>
        <translation>&amp;Apply</translation>
    </message>
    <message>
        <source>&amp;Scarta</source>
        <translation>&amp;Discard</translation>
    </message>
    <message>
        <source>Annulla</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Testo applicato.</source>
        <translation>Text applied.</translation>
    </message>
    <message>
        <source>Operazione non eseguita.</source>
        <translation>Operation not carried out.</translation>
    </message>
    <message>
        <source>Eliminare &quot;%1&quot;?</source>
        <translation>Delete &quot;%1&quot;?</translation>
    </message>
    <message>
        <source>Eliminare tutti gli elementi di &quot;%1&quot;? Sono %2.</source>
        <translation>Delete all elements of &quot;%1&quot;? There are %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; non si trova nell&apos;albero.</source>
        <translation>&quot;%1&quot; is not found in the tree.</translation>
    </message>
    <message>
        <source>Gli appunti sono vuoti.</source>
        <translation>The clipboard is empty.</translation>
    </message>
    <message>
        <source>Negli appunti: un oggetto della classe %1.</source>
        <translation>On the clipboard: an object of class %1.</translation>
    </message>
    <message>
        <source>L&apos;oggetto ha modifiche non salvate, che andranno perse. Incollare?</source>
        <translation>The object has unsaved changes, which will be lost. Paste?</translation>
    </message>
    <message>
        <source>Oggetto salvato.</source>
        <translation>Object saved.</translation>
    </message>
    <message>
        <source>Le modifiche non salvate andranno perse. Ricaricare l&apos;oggetto?</source>
        <translation>Unsaved changes will be lost. Reload the object?</translation>
    </message>
    <message>
        <source>L&apos;oggetto non è più nell&apos;archivio.</source>
        <translation>The object is no longer in the store.</translation>
    </message>
    <message>
        <source>Modifiche non salvate</source>
        <translation>Unsaved changes</translation>
    </message>
    <message>
        <source>Salvare le modifiche all&apos;oggetto &quot;%1&quot;?</source>
        <translation>Save the changes to the object &quot;%1&quot;?</translation>
    </message>
    <message>
        <source>%1 - %2[*]</source>
        <translation>%1 - %2[*]</translation>
    </message>
    <message>
        <source>Negli appunti va l&apos;intero oggetto. Copiarlo ed eliminare &quot;%1&quot;?</source>
        <translation>The clipboard takes the whole object. Copy it and delete &quot;%1&quot;?</translation>
    </message>
    <message>
        <source>La versione salvata ha preso il posto della propria.</source>
        <translation>The saved version has taken the place of yours.</translation>
    </message>
    <message>
        <source>L&apos;oggetto &quot;%1&quot; è stato eliminato da un altro programma. Ricrearlo con le proprie modifiche?</source>
        <translation>The object &quot;%1&quot; has been deleted by another program. Make it anew with your changes?</translation>
    </message>
    <message>
        <source>Errore imprevisto.</source>
        <translation>Unexpected error.</translation>
    </message>
</context>
<context>
    <name>kv::desktop::ObjectDialog</name>
    <message>
        <source>Classe</source>
        <translation>Class</translation>
    </message>
    <message>
        <source>Nome</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Descrizione</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&amp;Annulla</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>&amp;Classe:</source>
        <translation>C&amp;lass:</translation>
    </message>
    <message>
        <source>&amp;Nome:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>&amp;Descrizione:</source>
        <translation>&amp;Description:</translation>
    </message>
</context>
<context>
    <name>kv::desktop::ObjectsModel</name>
    <message>
        <source>Classe %1, %2</source>
        <translation>Class %1, %2</translation>
    </message>
    <message>
        <source>Nome</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Descrizione</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>Versione</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Revisione</source>
        <translation>Revision</translation>
    </message>
</context>
<context>
    <name>kv::desktop::SectionEditor</name>
    <message>
        <source>Parole proposte</source>
        <translation>Offered words</translation>
    </message>
    <message>
        <source>Testo della sezione</source>
        <translation>Text of the section</translation>
    </message>
    <message>
        <source>Riga %1 rifiutata</source>
        <translation>Line %1 refused</translation>
    </message>
</context>
</TS>
