<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>Ignition profiles for programmable CDIs: create, edit, compare, print and program them.</source>
        <translation>Zündprofile für programmierbare CDIs: erstellen, bearbeiten, vergleichen, drucken und programmieren.</translation>
    </message>
    <message>
        <source>Copyright © 2025 The Sparkwright developers</source>
        <translation>Copyright © 2025 Die Sparkwright-Entwickler</translation>
    </message>
    <message>
        <source>Sparkwright is free software: you may share and change it under the GNU General Public License, version 3 or any later version. It comes with no warranty.</source>
        <translation>Sparkwright ist freie Software: Sie dürfen es unter der GNU General Public License, Version 3 oder einer späteren Version, weitergeben und verändern. Es kommt ohne jede Gewährleistung.</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Factory profiles: library %1</source>
        <translation>Werksprofile: Bibliothek %1</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>Sparkwright logo</source>
        <translation>Sparkwright-Logo</translation>
    </message>
</context>
<context>
    <name>BridgeWatch</name>
    <message>
        <source>No CDI bridge plugged in</source>
        <translation>Keine CDI-Brücke eingesteckt</translation>
    </message>
    <message>
        <source>Virtual CDI on %1</source>
        <translation>Virtuelle CDI an %1</translation>
    </message>
    <message>
        <source>CDI bridge on %1</source>
        <translation>CDI-Brücke an %1</translation>
    </message>
    <message>
        <source>%1: firmware %2, serial number %3</source>
        <translation>%1: Firmware %2, Seriennummer %3</translation>
    </message>
</context>
<context>
    <name>CDataHolder</name>
    <message>
        <source>The default CDI profiles could not be loaded. The source file is either missing or corrupted or was created for a newer version of Sparkwright.</source>
        <translation>Die CDI-Standardprofile konnten nicht geladen werden. Die Quelldatei fehlt, ist beschädigt oder stammt aus einer neueren Version von Sparkwright.</translation>
    </message>
    <message>
        <source>Hints could not be loaded. The source file is either missing or corrupted or was created for a newer version of Sparkwright.</source>
        <translation>Die Hinweise konnten nicht geladen werden. Die Quelldatei fehlt, ist beschädigt oder stammt aus einer neueren Version von Sparkwright.</translation>
    </message>
</context>
<context>
    <name>CDialogPrompts</name>
    <message>
        <source>Question</source>
        <translation>Frage</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
</context>
<context>
    <name>CFileError</name>
    <message>
        <source>Source file</source>
        <translation>Quelldatei</translation>
    </message>
</context>
<context>
    <name>CLanguageMenu</name>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
</context>
<context>
    <name>CLanguageSwitcher</name>
    <message>
        <source>&amp;English</source>
        <translation>&amp;Englisch</translation>
    </message>
    <message>
        <source>&amp;German</source>
        <translation>&amp;Deutsch</translation>
    </message>
</context>
<context>
    <name>CProfileFiles</name>
    <message>
        <source>CDI profiles</source>
        <translation>CDI-Profile</translation>
    </message>
    <message>
        <source>Open CDI profile</source>
        <translation>CDI-Profil öffnen</translation>
    </message>
    <message>
        <source>CDI profile could not be loaded.</source>
        <translation>Das CDI-Profil konnte nicht geladen werden.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>CProfileItem</name>
    <message>
        <source>Custom</source>
        <translation>Eigenes</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
</context>
<context>
    <name>CUpdater</name>
    <message>
        <source>file is inaccessible</source>
        <translation>Datei ist nicht zugänglich</translation>
    </message>
    <message>
        <source>the request for administrator rights was refused</source>
        <translation>die Anfrage nach Administratorrechten wurde abgelehnt</translation>
    </message>
    <message>
        <source>not enough memory</source>
        <translation>nicht genügend Arbeitsspeicher</translation>
    </message>
    <message>
        <source>the updater is not a program for this system</source>
        <translation>der Updater ist kein Programm für dieses System</translation>
    </message>
    <message>
        <source>Windows refused to start it (error %1)</source>
        <translation>Windows hat den Start verweigert (Fehler %1)</translation>
    </message>
    <message>
        <source>On this system Sparkwright is updated by the package manager, together with the rest of the system (for example with &quot;sudo apt update &amp;&amp; sudo apt upgrade&quot; in a terminal). A software centre shows when an update is ready.</source>
        <translation>Auf diesem System wird Sparkwright von der Paketverwaltung zusammen mit dem übrigen System aktualisiert (zum Beispiel mit „sudo apt update &amp;&amp; sudo apt upgrade“ in einem Terminal). Eine Softwareverwaltung zeigt an, wenn eine Aktualisierung bereitsteht.</translation>
    </message>
</context>
<context>
    <name>CWebLinks</name>
    <message>
        <source>en/technical-specifications</source>
        <translation>de/technische-daten</translation>
    </message>
    <message>
        <source>en/programmable-cdi</source>
        <translation>de/programmierbare-cdi</translation>
    </message>
    <message>
        <source>en/facts-worth-knowing-about-ignition</source>
        <translation>de/wissenswertes-zur-zuendung</translation>
    </message>
    <message>
        <source>en/frequently-asked-questions</source>
        <translation>de/haeufige-fragen</translation>
    </message>
    <message>
        <source>http://sparkwright.example/en</source>
        <translation>http://sparkwright.example/de</translation>
    </message>
    <message>
        <source>en/contact</source>
        <translation>de/kontakt</translation>
    </message>
    <message>
        <source>&amp;Visit us on</source>
        <translation>&amp;Besuchen Sie uns auf</translation>
    </message>
</context>
<context>
    <name>ComparisonForm</name>
    <message>
        <source>Select the profiles that you would like to see in a common diagram.</source>
        <translation>Wählen Sie die Profile aus, die Sie in einem gemeinsamen Diagramm sehen möchten.</translation>
    </message>
    <message>
        <source>Select a {default} profile to add to the list.</source>
        <translation>Wählen Sie ein {Standardprofil} aus, das der Liste hinzugefügt wird.</translation>
    </message>
    <message>
        <source>Select a {custom} profile to add to the list.</source>
        <translation>Wählen Sie ein {eigenes Profil} aus, das der Liste hinzugefügt wird.</translation>
    </message>
    <message>
        <source>{Remove} the selected profile from the list.</source>
        <translation>Das ausgewählte Profil aus der Liste {entfernen}.</translation>
    </message>
    <message>
        <source>List of pro&amp;files</source>
        <translation>Profil&amp;liste</translation>
    </message>
    <message>
        <source>Add &amp;default profile</source>
        <translation>S&amp;tandardprofil hinzufügen</translation>
    </message>
    <message>
        <source>Add &amp;custom profile</source>
        <translation>&amp;Eigenes Profil hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>Entfe&amp;rnen</translation>
    </message>
    <message>
        <source>Remove &amp;all</source>
        <translation>&amp;Alle entfernen</translation>
    </message>
    <message>
        <source>&amp;Show graph</source>
        <translation>&amp;Diagramm anzeigen</translation>
    </message>
    <message>
        <source>Profiles to compare</source>
        <translation>Zu vergleichende Profile</translation>
    </message>
</context>
<context>
    <name>ContinueForm</name>
    <message>
        <source>Continue editing ...</source>
        <translation>Weiter bearbeiten ...</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Weiter</translation>
    </message>
</context>
<context>
    <name>CustomForm</name>
    <message>
        <source>Custom profile</source>
        <translation>Eigenes Profil</translation>
    </message>
    <message>
        <source>Custom profile:</source>
        <translation>Eigenes Profil:</translation>
    </message>
    <message>
        <source>The CDI cannot be programmed with this profile: the values marked in row %1 break their limits.</source>
        <translation>Die CDI kann mit diesem Profil nicht programmiert werden: Die markierten Werte in Zeile %1 verletzen ihre Grenzen.</translation>
    </message>
    <message>
        <source>The CDI cannot be programmed with this profile: the values marked in rows %1 break their limits.</source>
        <translation>Die CDI kann mit diesem Profil nicht programmiert werden: Die markierten Werte in den Zeilen %1 verletzen ihre Grenzen.</translation>
    </message>
    <message>
        <source>The CDI cannot be programmed with this profile.</source>
        <translation>Die CDI kann mit diesem Profil nicht programmiert werden.</translation>
    </message>
</context>
<context>
    <name>DefaultProfilesGui</name>
    <message>
        <source>No information available</source>
        <translation>Keine Informationen verfügbar</translation>
    </message>
    <message>
        <source>Pro&amp;files</source>
        <translation>Pro&amp;file</translation>
    </message>
    <message>
        <source>About this &amp;template</source>
        <translation>Zu dieser &amp;Vorlage</translation>
    </message>
</context>
<context>
    <name>DevicesForm</name>
    <message>
        <source>Serial ports</source>
        <translation>Serielle Schnittstellen</translation>
    </message>
    <message>
        <source>&amp;Refresh list</source>
        <translation>Liste &amp;aktualisieren</translation>
    </message>
    <message>
        <source>Retry automatic &amp;detection</source>
        <translation>Automatische &amp;Erkennung wiederholen</translation>
    </message>
    <message>
        <source>No port is selected.</source>
        <translation>Es ist keine Schnittstelle ausgewählt.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Automatic detection of the {USB/UART bridge} that connects your CDI with your computer failed. Please make sure that it is plugged in and either retry detection or manually select the appropriate port in the list below.</source>
        <translation>Die automatische Erkennung der {USB/UART-Brücke}, die Ihre CDI mit Ihrem Computer verbindet, ist fehlgeschlagen. Bitte stellen Sie sicher, dass sie eingesteckt ist, und wiederholen Sie entweder die Erkennung oder wählen Sie die passende Schnittstelle in der Liste unten von Hand aus.</translation>
    </message>
    <message>
        <source>Please select the port of your CDI.</source>
        <translation>Bitte wählen Sie die Schnittstelle Ihrer CDI aus.</translation>
    </message>
    <message>
        <source>virtual CDI</source>
        <translation>virtuelle CDI</translation>
    </message>
    <message>
        <source>Automatic detection failed.</source>
        <translation>Die automatische Erkennung ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The {USB/UART bridge} of your CDI was found on %1 and is selected in the list below. Choose Next to use it, or select another port.</source>
        <translation>Die {USB/UART-Brücke} Ihrer CDI wurde an %1 gefunden und ist in der Liste unten ausgewählt. Wählen Sie „Weiter“, um sie zu verwenden, oder wählen Sie eine andere Schnittstelle aus.</translation>
    </message>
</context>
<context>
    <name>DisclaimerDialog</name>
    <message>
        <source>Disclaimer</source>
        <translation>Haftungsausschluss</translation>
    </message>
    <message>
        <source>Disclaimer of liability</source>
        <translation>Ausschluss der Haftung</translation>
    </message>
    <message>
        <source>All modifications to the ignition box (CDI) are the sole responsibility of the user. We are not liable for any damage caused directly or indirectly by the use of the software, nor for any violations of the law.</source>
        <translation>Jede Änderung an der Zündbox (CDI) erfolgt in alleiniger Verantwortung des Anwenders. Für Schäden, die direkt oder indirekt durch die Verwendung der Software entstehen, sowie für Verstöße gegen gesetzliche Vorschriften übernehmen wir keine Haftung.</translation>
    </message>
    <message>
        <source>Do &amp;not show again</source>
        <translation>&amp;Nicht mehr anzeigen</translation>
    </message>
    <message>
        <source>&amp;Decline</source>
        <translation>A&amp;blehnen</translation>
    </message>
    <message>
        <source>&amp;Accept</source>
        <translation>&amp;Zustimmen</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
</context>
<context>
    <name>EditorForm</name>
    <message>
        <source>User defined parameters</source>
        <translation>Benutzerdefinierte Parameter</translation>
    </message>
    <message>
        <source>Click for additional information</source>
        <translation>Für weitere Informationen klicken</translation>
    </message>
    <message>
        <source>Write down some notes</source>
        <translation>Eigene Notizen festhalten</translation>
    </message>
    <message>
        <source>Click to edit</source>
        <translation>Zum Ändern klicken</translation>
    </message>
    <message>
        <source>Drag points to edit</source>
        <translation>Punkte zum Ändern ziehen</translation>
    </message>
    <message>
        <source>Edit your profile. Drag the points in the graph or type into the table.</source>
        <translation>Bearbeiten Sie Ihr Profil: Ziehen Sie die Punkte im Diagramm oder geben Sie die Werte in der Tabelle ein.</translation>
    </message>
    <message>
        <source>No information available</source>
        <translation>Keine Informationen vorhanden</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>Ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>This will reset your profile to the factory settings of &lt;b&gt;%1&lt;/b&gt;.</source>
        <translation>Ihr Profil wird auf die Werkseinstellungen von &lt;b&gt;%1&lt;/b&gt; zurückgesetzt.</translation>
    </message>
    <message>
        <source>Reset profile</source>
        <translation>Profil zurücksetzen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>reset to defaults</source>
        <translation>Zurücksetzen auf Werkseinstellungen</translation>
    </message>
    <message>
        <source>rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>edit of the notes</source>
        <translation>Bearbeiten der Notizen</translation>
    </message>
    <message>
        <source>edit of point %1</source>
        <translation>Ändern von Punkt %1</translation>
    </message>
    <message>
        <source>drag of point %1</source>
        <translation>Verschieben von Punkt %1</translation>
    </message>
    <message>
        <source>sort of the map</source>
        <translation>Sortieren der Tabelle</translation>
    </message>
    <message>
        <source>change of settings</source>
        <translation>Ändern der Einstellungen</translation>
    </message>
    <message>
        <source>Hint on the ignition map</source>
        <translation>Hinweis zum Zündkennfeld</translation>
    </message>
    <message>
        <source>Para&amp;meters</source>
        <translation>P&amp;arameter</translation>
    </message>
    <message>
        <source>&amp;Information</source>
        <translation>&amp;Informationen</translation>
    </message>
    <message>
        <source>Your current CDI profile &lt;b&gt;%1&lt;/b&gt; has unsaved changes.&lt;br&gt;&lt;br&gt;Do you want to save them?</source>
        <translation>Ihr aktuelles CDI-Profil &lt;b&gt;%1&lt;/b&gt; hat ungespeicherte Änderungen.&lt;br&gt;&lt;br&gt;Möchten Sie sie speichern?</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>profile</source>
        <translation>Profil</translation>
    </message>
    <message>
        <source>Save CDI profile</source>
        <translation>CDI-Profil speichern</translation>
    </message>
    <message>
        <source>Saving profile failed</source>
        <translation>Speichern des Profils fehlgeschlagen</translation>
    </message>
    <message>
        <source>paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>change of the selected points</source>
        <translation>Ändern der ausgewählten Punkte</translation>
    </message>
    <message>
        <source>Profile editor</source>
        <translation>Profileditor</translation>
    </message>
    <message>
        <source>Information on the template</source>
        <translation>Informationen zur Vorlage</translation>
    </message>
    <message>
        <source>In&amp;formation</source>
        <translation>Infor&amp;mation</translation>
    </message>
</context>
<context>
    <name>ErrorGui</name>
    <message>
        <source>Sparkwright - Error Message</source>
        <translation>Sparkwright - Fehlermeldung</translation>
    </message>
    <message>
        <source>An error occurred.</source>
        <translation>Es ist ein Fehler aufgetreten.</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
</context>
<context>
    <name>ExchangeTranscript</name>
    <message>
        <source>sent</source>
        <translation>gesendet</translation>
    </message>
    <message>
        <source>received</source>
        <translation>empfangen</translation>
    </message>
    <message>
        <source>discarded</source>
        <translation>verworfen</translation>
    </message>
    <message>
        <source>port error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>geschlossen</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Port: %1</source>
        <translation>Schnittstelle: %1</translation>
    </message>
    <message>
        <source>Description: %1</source>
        <translation>Beschreibung: %1</translation>
    </message>
    <message>
        <source>USB IDs: %1</source>
        <translation>USB-IDs: %1</translation>
    </message>
    <message>
        <source>Opened: %1</source>
        <translation>Geöffnet: %1</translation>
    </message>
    <message>
        <source>... %1 bytes in all</source>
        <translation>... insgesamt %1 Bytes</translation>
    </message>
</context>
<context>
    <name>ExchangeWording</name>
    <message>
        <source>The imported profile was saved as %1.</source>
        <translation>Das importierte Profil wurde als %1 gespeichert.</translation>
    </message>
    <message>
        <source>%1 is in use by another program. Close it and try again.</source>
        <translation>%1 wird von einem anderen Programm benutzt. Schließen Sie es und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>%1 is in use by another program: %2 (process %3). Close it and try again.</source>
        <translation>%1 wird von einem anderen Programm benutzt: %2 (Prozess %3). Schließen Sie es und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Permission denied: %1 belongs to the group %2 and has the access rights %3.</source>
        <translation>Zugriff verweigert: %1 gehört zur Gruppe %2 und hat die Zugriffsrechte %3.</translation>
    </message>
    <message>
        <source>The udev rule of the Sparkwright package gives you the bridge without a new login: install the package, or copy 70-sparkwright-cp210x.rules to /usr/lib/udev/rules.d, then plug the bridge in again.</source>
        <translation>Die udev-Regel aus dem Sparkwright-Paket gibt Ihnen Zugriff auf die Brücke, ohne dass Sie sich neu anmelden müssen: Installieren Sie das Paket oder kopieren Sie 70-sparkwright-cp210x.rules nach /usr/lib/udev/rules.d und stecken Sie die Brücke dann neu ein.</translation>
    </message>
    <message>
        <source>Add your account to this group, then log out and in again: %1</source>
        <translation>Nehmen Sie Ihr Benutzerkonto in diese Gruppe auf und melden Sie sich dann ab und wieder an: %1</translation>
    </message>
    <message>
        <source>Only its owner %1 may use it.</source>
        <translation>Nur der Eigentümer %1 darf darauf zugreifen.</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>%1 kann nicht geöffnet werden: %2</translation>
    </message>
    <message>
        <source>The ignition map of this profile is not valid. Correct it before programming the CDI.</source>
        <translation>Die Zündkurve dieses Profils ist ungültig. Korrigieren Sie sie, bevor Sie die CDI programmieren.</translation>
    </message>
    <message>
        <source>Programming</source>
        <translation>Programmierung</translation>
    </message>
    <message>
        <source>Sending profile data to the CDI</source>
        <translation>Profildaten werden an die CDI gesendet</translation>
    </message>
    <message>
        <source>Your CDI is now programmed with the profile &lt;b&gt;%&lt;/b&gt;.</source>
        <translation>Ihre CDI ist jetzt mit dem Profil &lt;b&gt;%&lt;/b&gt; programmiert.</translation>
    </message>
    <message>
        <source>Programming successful</source>
        <translation>Programmierung erfolgreich</translation>
    </message>
    <message>
        <source>Programming failed</source>
        <translation>Programmierung fehlgeschlagen</translation>
    </message>
    <message>
        <source>An error occurred during data transmission. The CDI may be programmed improperly and should not be used in its current state.</source>
        <translation>Bei der Datenübertragung ist ein Fehler aufgetreten. Die CDI ist möglicherweise fehlerhaft programmiert und sollte in diesem Zustand nicht verwendet werden.</translation>
    </message>
    <message>
        <source>Waiting for response</source>
        <translation>Warte auf Antwort</translation>
    </message>
    <message>
        <source>CDI sent an invalid response</source>
        <translation>Die CDI hat eine ungültige Antwort gesendet</translation>
    </message>
    <message>
        <source>Importing</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>Requesting data from CDI</source>
        <translation>Daten werden von der CDI angefordert</translation>
    </message>
    <message>
        <source>Import failed</source>
        <translation>Import fehlgeschlagen</translation>
    </message>
    <message>
        <source>Imported profile data corresponds to an invalid or unknown motorbike type</source>
        <translation>Die importierten Profildaten gehören zu einem ungültigen oder unbekannten Motorradtyp</translation>
    </message>
    <message>
        <source>Received invalid profile data </source>
        <translation>Ungültige Profildaten empfangen </translation>
    </message>
    <message>
        <source>Import OK</source>
        <translation>Import erfolgreich</translation>
    </message>
    <message>
        <source>Imported profile data will be sent to editor shortly.</source>
        <translation>Die importierten Profildaten werden gleich an den Editor übergeben.</translation>
    </message>
    <message>
        <source>Testing</source>
        <translation>Verbindungstest</translation>
    </message>
    <message>
        <source>Sending ping to CDI</source>
        <translation>Ping wird an die CDI gesendet</translation>
    </message>
    <message>
        <source>Test failed</source>
        <translation>Test fehlgeschlagen</translation>
    </message>
    <message>
        <source>Your CDI responded but an error occurred during data transmission.</source>
        <translation>Ihre CDI hat geantwortet, aber bei der Datenübertragung ist ein Fehler aufgetreten.</translation>
    </message>
    <message>
        <source>Your CDI responded as expected. Firmware %1 and serial number %2 were reported.</source>
        <translation>Ihre CDI hat wie erwartet geantwortet. Gemeldet wurden die Firmware %1 und die Seriennummer %2.</translation>
    </message>
    <message>
        <source>Test successful</source>
        <translation>Test erfolgreich</translation>
    </message>
    <message>
        <source>The connection to the CDI on %1 was lost. Check the cable and the USB bridge, then try again.</source>
        <translation>Die Verbindung zur CDI an %1 ist abgerissen. Prüfen Sie das Kabel und die USB-Brücke und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Verification failed</source>
        <translation>Prüfung fehlgeschlagen</translation>
    </message>
    <message>
        <source>Your CDI echoed the profile &lt;b&gt;%&lt;/b&gt;, but it gives back other values than were sent (sent → read back):</source>
        <translation>Ihre CDI hat das Profil &lt;b&gt;%&lt;/b&gt; zurückgesendet, gibt beim Zurücklesen aber andere Werte heraus als gesendet (gesendet → zurückgelesen):</translation>
    </message>
    <message>
        <source>The CDI may be programmed improperly and should not be used in its current state.</source>
        <translation>Die CDI ist möglicherweise fehlerhaft programmiert und sollte in diesem Zustand nicht verwendet werden.</translation>
    </message>
    <message>
        <source>Nothing had been sent yet, so the CDI has not been changed.</source>
        <translation>Es war noch nichts gesendet worden, die CDI ist also unverändert.</translation>
    </message>
    <message>
        <source>Nothing answered on %1. The CDI may have been programmed not to give its profile back; otherwise no CDI seems to be connected to this port.</source>
        <translation>An %1 hat nichts geantwortet. Die CDI wurde möglicherweise so programmiert, dass sie ihr Profil nicht herausgibt; andernfalls scheint an dieser Schnittstelle keine CDI angeschlossen zu sein.</translation>
    </message>
    <message>
        <source>Nothing answered on %1. No CDI seems to be connected to this port.</source>
        <translation>An %1 hat nichts geantwortet. An dieser Schnittstelle scheint keine CDI angeschlossen zu sein.</translation>
    </message>
    <message>
        <source>Imported from CDI %1</source>
        <translation>Aus der CDI importiert am %1</translation>
    </message>
    <message>
        <source>Programmed, not verified</source>
        <translation>Programmiert, nicht geprüft</translation>
    </message>
    <message>
        <source>Your CDI echoed the profile &lt;b&gt;%&lt;/b&gt;, so it received it, but reading it back failed (%1). Whether the CDI holds it is not known: program it again.</source>
        <translation>Ihre CDI hat das Profil &lt;b&gt;%&lt;/b&gt; zurückgesendet und also empfangen, aber das Zurücklesen ist fehlgeschlagen (%1). Ob die CDI es gespeichert hat, ist nicht bekannt: Programmieren Sie sie erneut.</translation>
    </message>
    <message>
        <source>Programmed and verified</source>
        <translation>Programmiert und geprüft</translation>
    </message>
    <message>
        <source>Read back from the CDI, it matches what was sent byte for byte.</source>
        <translation>Aus der CDI zurückgelesen, stimmt es Byte für Byte mit dem Gesendeten überein.</translation>
    </message>
    <message>
        <source>The echo confirmed receipt, but the profile cannot be read back: it was programmed without allowing reimport.</source>
        <translation>Die Rücksendung bestätigt den Empfang, aber das Profil kann nicht zurückgelesen werden: Es wurde ohne Erlaubnis zum Reimport programmiert.</translation>
    </message>
    <message>
        <source>Reading the CDI</source>
        <translation>CDI wird gelesen</translation>
    </message>
    <message>
        <source>Asking the CDI for the profile it holds</source>
        <translation>Das Profil in der CDI wird abgefragt</translation>
    </message>
    <message>
        <source>Verifying</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Reading the profile back from the CDI</source>
        <translation>Das Profil wird aus der CDI zurückgelesen</translation>
    </message>
    <message>
        <source>The CDI did not give the profile it holds (%1), so what programming changes cannot be shown. A CDI programmed without allowing reimport keeps its profile to itself. You can still go on.</source>
        <translation>Die CDI hat ihr Profil nicht herausgegeben (%1), daher kann nicht gezeigt werden, was das Programmieren ändert. Eine CDI, die ohne Erlaubnis zum Reimport programmiert wurde, gibt ihr Profil nicht heraus. Sie können trotzdem fortfahren.</translation>
    </message>
    <message>
        <source>The CDI already holds this profile</source>
        <translation>Die CDI enthält bereits dieses Profil</translation>
    </message>
    <message>
        <source>Programming changes what the CDI holds (now → after programming):</source>
        <translation>Das Programmieren ändert in der CDI (jetzt → danach):</translation>
    </message>
    <message>
        <source>Waiting for your confirmation</source>
        <translation>Warten auf Ihre Bestätigung</translation>
    </message>
    <message>
        <source>the CDI did not answer</source>
        <translation>die CDI hat nicht geantwortet</translation>
    </message>
    <message>
        <source>the connection to the CDI was lost</source>
        <translation>die Verbindung zur CDI ist abgerissen</translation>
    </message>
    <message>
        <source>Reading failed</source>
        <translation>Lesen fehlgeschlagen</translation>
    </message>
</context>
<context>
    <name>FileError</name>
    <message>
        <source>the file does not exist</source>
        <translation>die Datei ist nicht vorhanden</translation>
    </message>
    <message>
        <source>the file could not be read</source>
        <translation>die Datei konnte nicht gelesen werden</translation>
    </message>
    <message>
        <source>the file is damaged or of another kind</source>
        <translation>die Datei ist beschädigt oder von anderer Art</translation>
    </message>
    <message>
        <source>the file may not be written there</source>
        <translation>die Datei darf dort nicht geschrieben werden</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>Kein Speicherplatz mehr auf dem Datenträger</translation>
    </message>
    <message>
        <source>A file that was there before is unchanged.</source>
        <translation>Eine zuvor vorhandene Datei ist unverändert.</translation>
    </message>
    <message>
        <source>the file could not be written</source>
        <translation>die Datei konnte nicht geschrieben werden</translation>
    </message>
</context>
<context>
    <name>FlagsForm</name>
    <message>
        <source>Flags</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Charging voltage of the ignition capacitor</source>
        <translation>Ladespannung des Zündkondensators</translation>
    </message>
    <message>
        <source>Click for additional information</source>
        <translation>Für weitere Informationen klicken</translation>
    </message>
    <message>
        <source>Pulse generator edge</source>
        <translation>Impulsgeberflanke</translation>
    </message>
    <message>
        <source>Side stand monitoring</source>
        <translation>Seitenständerüberwachung</translation>
    </message>
    <message>
        <source>If the CDI has a blue or yellow wire, then the wire must also be cut to activate monitoring.</source>
        <translation>Hat die CDI ein blaues oder gelbes Kabel, muss dieses Kabel zusätzlich durchtrennt werden, damit die Überwachung wirkt.</translation>
    </message>
    <message>
        <source>The ignition is enabled when pin 2 of the CDI is connected to battery minus.</source>
        <translation>Die Zündung ist freigegeben, wenn Pin 2 der CDI mit dem Minuspol der Batterie verbunden ist.</translation>
    </message>
    <message>
        <source>The ignition is blocked when pin 2 of the CDI is connected to battery minus.</source>
        <translation>Die Zündung ist gesperrt, wenn Pin 2 der CDI mit dem Minuspol der Batterie verbunden ist.</translation>
    </message>
    <message>
        <source>Hint on the ignition voltage</source>
        <translation>Hinweis zur Zündspannung</translation>
    </message>
    <message>
        <source>Hint on the pick-up edge</source>
        <translation>Hinweis zur Geberflanke</translation>
    </message>
    <message>
        <source>Hint on side stand monitoring</source>
        <translation>Hinweis zur Seitenständerüberwachung</translation>
    </message>
    <message>
        <source>Hint on the sensor advance</source>
        <translation>Hinweis zur Sensorvorzündung</translation>
    </message>
    <message>
        <source>Ignition &amp;voltage</source>
        <translation>Zün&amp;dspannung</translation>
    </message>
    <message>
        <source>Trigger with &amp;falling edge</source>
        <translation>Zündung bei &amp;fallender Flanke</translation>
    </message>
    <message>
        <source>&amp;Trigger with rising edge</source>
        <translation>Zündung bei s&amp;teigender Flanke</translation>
    </message>
    <message>
        <source>&amp;Enabled</source>
        <translation>A&amp;ktiviert</translation>
    </message>
    <message>
        <source>&amp;Ground enables ignition</source>
        <translation>Masse &amp;gibt die Zündung frei</translation>
    </message>
    <message>
        <source>Ground blo&amp;cks ignition</source>
        <translation>&amp;Masse sperrt die Zündung</translation>
    </message>
    <message>
        <source>&amp;Sensor advance</source>
        <translation>Sensor&amp;vorzündung</translation>
    </message>
</context>
<context>
    <name>GraphForm</name>
    <message>
        <source>Graph</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>Graph of the ignition map</source>
        <translation>Diagramm des Zündkennfelds</translation>
    </message>
    <message>
        <source>%1 rpm, %2°</source>
        <translation>%1 U/min, %2°</translation>
    </message>
</context>
<context>
    <name>HintDialog</name>
    <message>
        <source>Hint</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Welcome.</source>
        <translation>Willkommen.</translation>
    </message>
    <message>
        <source>Print PDF</source>
        <translation>PDF drucken</translation>
    </message>
    <message>
        <source>version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Program the CDI with this profile</source>
        <translation>Die CDI mit diesem Profil programmieren</translation>
    </message>
    <message>
        <source>Please confirm programming the CDI with this profile.</source>
        <translation>Bitte bestätigen Sie, dass die CDI mit diesem Profil programmiert werden soll.</translation>
    </message>
    <message>
        <source>Update Failed</source>
        <translation>Aktualisierung fehlgeschlagen</translation>
    </message>
    <message>
        <source>Could not launch updater</source>
        <translation>Das Aktualisierungsprogramm konnte nicht gestartet werden</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>profile</source>
        <translation>Profil</translation>
    </message>
    <message>
        <source>PDF files</source>
        <translation>PDF-Dateien</translation>
    </message>
    <message>
        <source>Printing PDF failed</source>
        <translation>Drucken als PDF fehlgeschlagen</translation>
    </message>
    <message>
        <source>%1 (%2, %3)</source>
        <translation>%1 (%2, %3)</translation>
    </message>
    <message>
        <source>No recent profiles</source>
        <translation>Keine zuletzt geöffneten Profile</translation>
    </message>
    <message>
        <source>Select port</source>
        <translation>Schnittstelle auswählen</translation>
    </message>
    <message>
        <source>Sparkwright is exchanging data with your CDI.</source>
        <translation>Sparkwright tauscht Daten mit Ihrer CDI aus.</translation>
    </message>
    <message>
        <source>The exchange with your CDI has ended.</source>
        <translation>Der Datenaustausch mit Ihrer CDI ist beendet.</translation>
    </message>
    <message>
        <source>Programmed profiles</source>
        <translation>Programmierte Profile</translation>
    </message>
    <message>
        <source>&amp;Profile</source>
        <translation>&amp;Profil</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Sparkwright, version %1</source>
        <translation>Sparkwright, Version %1</translation>
    </message>
    <message>
        <source>E&amp;xit program</source>
        <translation>Programm &amp;beenden</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Links</source>
        <translation>&amp;Links</translation>
    </message>
    <message>
        <source>&amp;Create from template</source>
        <translation>Aus &amp;Vorlage erstellen</translation>
    </message>
    <message>
        <source>&amp;Open file</source>
        <translation>&amp;Datei öffnen</translation>
    </message>
    <message>
        <source>R&amp;eset to defaults</source>
        <translation>Auf Werks&amp;einstellungen zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Re&amp;do</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Update</source>
        <translation>&amp;Aktualisieren</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Über</translation>
    </message>
    <message>
        <source>&amp;Import from CDI</source>
        <translation>Aus CDI &amp;importieren</translation>
    </message>
    <message>
        <source>Programmed pro&amp;files...</source>
        <translation>&amp;Programmierte Profile...</translation>
    </message>
    <message>
        <source>&amp;Program CDI</source>
        <translation>&amp;CDI programmieren</translation>
    </message>
    <message>
        <source>&amp;How to program our CDIs</source>
        <translation>&amp;So programmieren Sie unsere CDIs</translation>
    </message>
    <message>
        <source>&amp;Technical specification of our CDIs</source>
        <translation>&amp;Technische Daten unserer CDIs</translation>
    </message>
    <message>
        <source>&amp;Contact us</source>
        <translation>&amp;Kontakt</translation>
    </message>
    <message>
        <source>Frequently &amp;asked questions</source>
        <translation>&amp;Häufig gestellte Fragen</translation>
    </message>
    <message>
        <source>&amp;Facts worth knowing about ignition</source>
        <translation>&amp;Wissenswertes zur Zündung</translation>
    </message>
    <message>
        <source>Pri&amp;nt PDF</source>
        <translation>PDF dr&amp;ucken</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>Re&amp;do %1</source>
        <translation>&amp;Wiederholen: %1</translation>
    </message>
    <message>
        <source>Program the &amp;CDI</source>
        <translation>&amp;CDI programmieren</translation>
    </message>
    <message>
        <source>Sparkwright closes as soon as the exchange with your CDI has ended.</source>
        <translation>Sparkwright wird beendet, sobald der Datenaustausch mit Ihrer CDI abgeschlossen ist.</translation>
    </message>
    <message>
        <source>Open &amp;Software Centre</source>
        <translation>&amp;Softwareverwaltung öffnen</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aktualisierung</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save &amp;as...</source>
        <translation>Speichern u&amp;nter...</translation>
    </message>
    <message>
        <source>Saved to %1</source>
        <translation>Gespeichert unter %1</translation>
    </message>
    <message>
        <source>%1[*] - Sparkwright</source>
        <translation>%1[*] - Sparkwright</translation>
    </message>
    <message>
        <source>%1 (%2)[*] - Sparkwright</source>
        <translation>%1 (%2)[*] - Sparkwright</translation>
    </message>
    <message>
        <source>Prin&amp;t...</source>
        <translation>Druc&amp;ken...</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>The sheet could not be printed.</source>
        <translation>Das Blatt konnte nicht gedruckt werden.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Export &amp;graph...</source>
        <translation>&amp;Grafik exportieren...</translation>
    </message>
    <message>
        <source>Export &amp;values as CSV...</source>
        <translation>Wer&amp;te als CSV exportieren...</translation>
    </message>
    <message>
        <source>comparison</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>Export graph</source>
        <translation>Grafik exportieren</translation>
    </message>
    <message>
        <source>SVG drawings</source>
        <translation>SVG-Zeichnungen</translation>
    </message>
    <message>
        <source>PNG images</source>
        <translation>PNG-Bilder</translation>
    </message>
    <message>
        <source>Exporting the graph failed</source>
        <translation>Exportieren der Grafik fehlgeschlagen</translation>
    </message>
    <message>
        <source>Exported to %1</source>
        <translation>Exportiert nach %1</translation>
    </message>
    <message>
        <source>Export values as CSV</source>
        <translation>Werte als CSV exportieren</translation>
    </message>
    <message>
        <source>CSV files</source>
        <translation>CSV-Dateien</translation>
    </message>
    <message>
        <source>Exporting the values failed</source>
        <translation>Exportieren der Werte fehlgeschlagen</translation>
    </message>
</context>
<context>
    <name>MapCellDelegate</name>
    <message>
        <source>RPM of point %1</source>
        <translation>U/min von Punkt %1</translation>
    </message>
    <message>
        <source>Angle at %1 RPM, degrees (point %2)</source>
        <translation>Winkel bei %1 U/min, Grad (Punkt %2)</translation>
    </message>
</context>
<context>
    <name>MapDescription</name>
    <message>
        <source>Graph of the ignition map</source>
        <translation>Diagramm des Zündkennfelds</translation>
    </message>
    <message>
        <source>Graph of the ignition map of %1</source>
        <translation>Diagramm des Zündkennfelds von %1</translation>
    </message>
    <message>
        <source>%1 rpm %2°</source>
        <translation>%1 U/min %2°</translation>
    </message>
    <message numerus="yes">
        <source>Advance angle over engine speed, %n points: %1.</source>
        <translation>
            <numerusform>Vorzündwinkel über der Drehzahl, %n Punkt: %1.</numerusform>
            <numerusform>Vorzündwinkel über der Drehzahl, %n Punkte: %1.</numerusform>
        </translation>
    </message>
    <message>
        <source>Highest advance %1° at %2 rpm.</source>
        <translation>Höchste Vorzündung %1° bei %2 U/min.</translation>
    </message>
    <message>
        <source>Row %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>All points are below the limit of this profile.</source>
        <translation>Alle Punkte liegen unter der Grenze dieses Profils.</translation>
    </message>
    <message>
        <source>Breaking the limits, drawn red: %1.</source>
        <translation>Über den Grenzen, rot gezeichnet: %1.</translation>
    </message>
    <message>
        <source>(%1°, one degree too much)</source>
        <translation>(%1°, ein Grad zu viel)</translation>
    </message>
    <message>
        <source>(%1°, %2 degrees too much)</source>
        <translation>(%1°, %2 Grad zu viel)</translation>
    </message>
</context>
<context>
    <name>MapPlotter</name>
    <message>
        <source>Invalid</source>
        <translation>Ungültig</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <source>RPM</source>
        <translation>U/min</translation>
    </message>
</context>
<context>
    <name>MultiGraphForm</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>The graph shows the selected profiles for comparison.</source>
        <translation>Das Diagramm zeigt die ausgewählten Profile im Vergleich.</translation>
    </message>
    <message>
        <source>Draw each shown profile&apos;s ceiling: the highest angle its template allows at each engine speed</source>
        <translation>Für jedes gezeigte Profil die Obergrenze zeichnen: den höchsten Winkel, den seine Vorlage bei jeder Drehzahl erlaubt</translation>
    </message>
    <message>
        <source>Show li&amp;mits</source>
        <translation>&amp;Grenzen zeigen</translation>
    </message>
    <message>
        <source>Point %1</source>
        <translation>Punkt %1</translation>
    </message>
    <message>
        <source>No profile is shown: tick one in the legend or in the list.</source>
        <translation>Kein Profil wird gezeigt: Haken Sie eines in der Legende oder in der Liste an.</translation>
    </message>
    <message>
        <source>Engine speed (rpm) and advance angle of each point; in brackets the difference to the same point of %1.</source>
        <translation>Drehzahl (U/min) und Vorzündwinkel jedes Punkts; in Klammern der Unterschied zum selben Punkt von %1.</translation>
    </message>
    <message>
        <source>Click to hide this profile.</source>
        <translation>Klicken, um dieses Profil auszublenden.</translation>
    </message>
    <message>
        <source>Click to show this profile.</source>
        <translation>Klicken, um dieses Profil einzublenden.</translation>
    </message>
    <message>
        <source>Values of the compared profiles</source>
        <translation>Werte der verglichenen Profile</translation>
    </message>
    <message>
        <source>Graph of the compared profiles</source>
        <translation>Diagramm der verglichenen Profile</translation>
    </message>
</context>
<context>
    <name>NameForm</name>
    <message>
        <source>Profile:</source>
        <translation>Profil:</translation>
    </message>
    <message>
        <source>Click to rename</source>
        <translation>Zum Umbenennen klicken</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message>
        <source>&amp;Apply [Enter]</source>
        <translation>&amp;Übernehmen [Enter]</translation>
    </message>
    <message>
        <source>Profile name</source>
        <translation>Profilname</translation>
    </message>
</context>
<context>
    <name>NotesForm</name>
    <message>
        <source>Custom notes</source>
        <translation>Eigene Notizen</translation>
    </message>
    <message>
        <source>E&amp;dit</source>
        <translation>B&amp;earbeiten</translation>
    </message>
    <message>
        <source>Appl&amp;y [Esc]</source>
        <translation>Übe&amp;rnehmen [Esc]</translation>
    </message>
    <message>
        <source>&amp;Custom notes</source>
        <translation>Eigene &amp;Notizen</translation>
    </message>
</context>
<context>
    <name>ProfileComparison</name>
    <message>
        <source>empty</source>
        <translation>leer</translation>
    </message>
    <message>
        <source>%1 rpm, %2°</source>
        <translation>%1 U/min, %2°</translation>
    </message>
    <message>
        <source>type %1</source>
        <translation>Typ %1</translation>
    </message>
    <message>
        <source>Motorbike type</source>
        <translation>Motorradtyp</translation>
    </message>
    <message>
        <source>Profile kind</source>
        <translation>Profilart</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Eigenes</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Slot %1</source>
        <translation>Punkt %1</translation>
    </message>
    <message>
        <source>Ignition voltage</source>
        <translation>Zündspannung</translation>
    </message>
    <message>
        <source>Side stand monitoring</source>
        <translation>Seitenständerüberwachung</translation>
    </message>
    <message>
        <source>enabled</source>
        <translation>aktiviert</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>deaktiviert</translation>
    </message>
    <message>
        <source>Ground enables ignition</source>
        <translation>Masse gibt die Zündung frei</translation>
    </message>
    <message>
        <source>Ground blocks ignition</source>
        <translation>Masse sperrt die Zündung</translation>
    </message>
    <message>
        <source>Pulse generator edge</source>
        <translation>Impulsgeberflanke</translation>
    </message>
    <message>
        <source>Trigger with rising edge</source>
        <translation>Zündung bei steigender Flanke</translation>
    </message>
    <message>
        <source>Trigger with falling edge</source>
        <translation>Zündung bei fallender Flanke</translation>
    </message>
    <message>
        <source>Sensor mode</source>
        <translation>Sensormodus</translation>
    </message>
    <message>
        <source>Reimporting</source>
        <translation>Reimport</translation>
    </message>
    <message>
        <source>allowed</source>
        <translation>erlaubt</translation>
    </message>
    <message>
        <source>not allowed</source>
        <translation>nicht erlaubt</translation>
    </message>
    <message>
        <source>Flag byte</source>
        <translation>Flag-Byte</translation>
    </message>
    <message>
        <source>Sensor advance</source>
        <translation>Sensorvorzündung</translation>
    </message>
    <message>
        <source>Sensor coefficient K1</source>
        <translation>Sensorkoeffizient K1</translation>
    </message>
    <message>
        <source>Sensor coefficient K2</source>
        <translation>Sensorkoeffizient K2</translation>
    </message>
    <message>
        <source>%1: %2 → %3</source>
        <translation>%1: %2 → %3</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>Profil</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>RPM %1</source>
        <translation>Drehzahl %1</translation>
    </message>
    <message>
        <source>Angle %1</source>
        <translation>Winkel %1</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>RPM cannot be negative</source>
        <translation>Die Drehzahl darf nicht negativ sein</translation>
    </message>
    <message>
        <source>RPM exceed the maximum of %max</source>
        <translation>Die Drehzahl liegt über dem Höchstwert von %max</translation>
    </message>
    <message>
        <source>angle cannot be negative</source>
        <translation>Der Winkel darf nicht negativ sein</translation>
    </message>
    <message>
        <source>angle exceeds maximum of %max</source>
        <translation>Der Winkel liegt über dem Höchstwert von %max</translation>
    </message>
    <message>
        <source>the angle for %rpm RPM should not exceed %max for this profile</source>
        <translation>Bei %rpm U/min sollte der Winkel in diesem Profil %max nicht überschreiten</translation>
    </message>
    <message>
        <source>Speeds must rise from row to row</source>
        <translation>Die Drehzahlen müssen von Zeile zu Zeile steigen</translation>
    </message>
    <message>
        <source>Row %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
</context>
<context>
    <name>QWidget</name>
    <message>
        <source>Virtual CDI</source>
        <translation>Virtuelle CDI</translation>
    </message>
</context>
<context>
    <name>Summary</name>
    <message>
        <source>Ignition map</source>
        <translation>Zündkennfeld</translation>
    </message>
    <message>
        <source>Engine speed in RPM and advance angle in degrees of the ten points</source>
        <translation>Drehzahl in U/min und Vorzündwinkel in Grad der zehn Punkte</translation>
    </message>
    <message>
        <source>Custom notes</source>
        <translation>Eigene Notizen</translation>
    </message>
</context>
<context>
    <name>SummaryForm</name>
    <message>
        <source>RPM</source>
        <translation>U/min</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <source>Ignition voltage</source>
        <translation>Zündspannung</translation>
    </message>
    <message>
        <source>enabled</source>
        <translation>aktiviert</translation>
    </message>
    <message>
        <source>ground enables ignition</source>
        <translation>Masse gibt die Zündung frei</translation>
    </message>
    <message>
        <source>ground blocks ignition</source>
        <translation>Masse sperrt die Zündung</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>deaktiviert</translation>
    </message>
    <message>
        <source>Sensor advance</source>
        <translation>Sensorvorzündung</translation>
    </message>
    <message>
        <source>Side stand monitoring</source>
        <translation>Seitenständerüberwachung</translation>
    </message>
    <message>
        <source>Pulse generator edge</source>
        <translation>Impulsgeberflanke</translation>
    </message>
    <message>
        <source>trigger with rising edge</source>
        <translation>Zündung bei steigender Flanke</translation>
    </message>
    <message>
        <source>trigger with falling edge</source>
        <translation>Zündung bei fallender Flanke</translation>
    </message>
</context>
<context>
    <name>SummarySheet</name>
    <message>
        <source>RPM</source>
        <translation>U/min</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notizen</translation>
    </message>
    <message>
        <source>Ignition voltage</source>
        <translation>Zündspannung</translation>
    </message>
    <message>
        <source>Side stand monitoring</source>
        <translation>Seitenständerüberwachung</translation>
    </message>
    <message>
        <source>enabled</source>
        <translation>aktiviert</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>deaktiviert</translation>
    </message>
    <message>
        <source>Ground enables ignition</source>
        <translation>Masse gibt die Zündung frei</translation>
    </message>
    <message>
        <source>Ground blocks ignition</source>
        <translation>Masse sperrt die Zündung</translation>
    </message>
    <message>
        <source>trigger with rising edge</source>
        <translation>Zündung bei steigender Flanke</translation>
    </message>
    <message>
        <source>trigger with falling edge</source>
        <translation>Zündung bei fallender Flanke</translation>
    </message>
    <message>
        <source>Sensor advance</source>
        <translation>Sensorvorzündung</translation>
    </message>
    <message>
        <source>Notes (continued)</source>
        <translation>Notizen (Fortsetzung)</translation>
    </message>
    <message>
        <source>Pulse generator edge</source>
        <translation>Impulsgeberflanke</translation>
    </message>
</context>
<context>
    <name>TableForm</name>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <source>RPM</source>
        <translation>U/min</translation>
    </message>
    <message>
        <source>S&amp;ort ascending</source>
        <translation>Aufsteigend s&amp;ortieren</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>&amp;Add one degree</source>
        <translation>Ein Grad &amp;mehr</translation>
    </message>
    <message>
        <source>&amp;Subtract one degree</source>
        <translation>Ein Grad we&amp;niger</translation>
    </message>
    <message>
        <source>Set to &amp;value...</source>
        <translation>Auf &amp;Wert setzen...</translation>
    </message>
    <message>
        <source>&amp;Interpolate angles</source>
        <translation>Winkel &amp;interpolieren</translation>
    </message>
    <message>
        <source>Set to value</source>
        <translation>Auf Wert setzen</translation>
    </message>
    <message>
        <source>Angle for the selected points:</source>
        <translation>Winkel für die ausgewählten Punkte:</translation>
    </message>
    <message>
        <source>Value for the selected cells:</source>
        <translation>Wert für die ausgewählten Zellen:</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Only whole numbers can be pasted into the map; &quot;%1&quot; is not one. Nothing was changed.</source>
        <translation>In das Kennfeld lassen sich nur ganze Zahlen einfügen; „%1“ ist keine. Nichts wurde geändert.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>The clipboard holds no numbers to paste.</source>
        <translation>Die Zwischenablage enthält keine Zahlen zum Einfügen.</translation>
    </message>
    <message>
        <source>%1 rows of %2 values do not fit into the map from row %3 on: it has 10 rows of speed and angle. Nothing was changed.</source>
        <translation>%1 Zeilen mit %2 Werten passen ab Zeile %3 nicht in das Kennfeld: Es hat 10 Zeilen mit Drehzahl und Winkel. Nichts wurde geändert.</translation>
    </message>
    <message>
        <source>Engine speed in RPM and advance angle in degrees of the ten points</source>
        <translation>Drehzahl in U/min und Vorzündwinkel in Grad der zehn Punkte</translation>
    </message>
    <message>
        <source>Ignition map</source>
        <translation>Zündkennfeld</translation>
    </message>
</context>
<context>
    <name>WaitForm</name>
    <message>
        <source>Programming CDI</source>
        <translation>CDI wird programmiert</translation>
    </message>
    <message>
        <source>Communicating with CDI.</source>
        <translation>Kommunikation mit der CDI.</translation>
    </message>
    <message>
        <source>Result of the exchange with the CDI</source>
        <translation>Ergebnis des Datenaustauschs mit der CDI</translation>
    </message>
    <message>
        <source>Program CDI</source>
        <translation>CDI programmieren</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Connection to the CDI</source>
        <translation>Verbindung zur CDI</translation>
    </message>
    <message>
        <source>A copy of this profile could not be kept among the programmed profiles: %1</source>
        <translation>Eine Kopie dieses Profils konnte nicht bei den programmierten Profilen abgelegt werden: %1</translation>
    </message>
    <message>
        <source>&amp;Retry</source>
        <translation>Erneut &amp;versuchen</translation>
    </message>
    <message>
        <source>&amp;Choose another port</source>
        <translation>&amp;Andere Schnittstelle wählen</translation>
    </message>
    <message>
        <source>Frames exchanged with the CDI</source>
        <translation>Mit der CDI ausgetauschte Datenrahmen</translation>
    </message>
    <message>
        <source>Port: %1</source>
        <translation>Schnittstelle: %1</translation>
    </message>
    <message>
        <source>&amp;Details</source>
        <translation>&amp;Details</translation>
    </message>
    <message>
        <source>Cop&amp;y</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Busy</source>
        <translation>Beschäftigt</translation>
    </message>
    <message>
        <source>Succeeded</source>
        <translation>Erfolgreich</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Fehlgeschlagen</translation>
    </message>
</context>
<context>
    <name>WizardForm</name>
    <message>
        <source>Create or modify your personal profiles with {custom parameters}</source>
        <translation>Erstellen oder ändern Sie Ihre persönlichen Profile mit {eigenen Parametern}</translation>
    </message>
    <message>
        <source>{Program your CDI} with a profile of your choice</source>
        <translation>{Programmieren Sie Ihre CDI} mit einem Profil Ihrer Wahl</translation>
    </message>
    <message>
        <source>{Test the connection} between your computer and your plugged-in CDI</source>
        <translation>{Testen Sie die Verbindung} zwischen Ihrem Computer und Ihrer angeschlossenen CDI</translation>
    </message>
    <message>
        <source>Display two or more profiles in a graph to {compare} them.</source>
        <translation>Zeigen Sie zwei oder mehr Profile in einem Diagramm an, um sie zu {vergleichen}.</translation>
    </message>
    <message>
        <source>Create a new profile from a {default template}</source>
        <translation>Ein neues Profil aus einer {Standardvorlage} erstellen</translation>
    </message>
    <message>
        <source>Load a previously created custom profile from a {file}</source>
        <translation>Ein zuvor erstelltes eigenes Profil aus einer {Datei} laden</translation>
    </message>
    <message>
        <source>Import profile data from your {CDI}</source>
        <translation>Profildaten aus Ihrer {CDI} importieren</translation>
    </message>
    <message>
        <source>Program the CDI with a previously created {custom profile}</source>
        <translation>Die CDI mit einem zuvor erstellten {eigenen Profil} programmieren</translation>
    </message>
    <message>
        <source>Program the CDI with a default profile using {factory settings}</source>
        <translation>Die CDI mit einem Standardprofil mit {Werkseinstellungen} programmieren</translation>
    </message>
    <message>
        <source>Choose a template</source>
        <translation>Vorlage auswählen</translation>
    </message>
    <message>
        <source>Welcome to Sparkwright. What would you like to do?</source>
        <translation>Willkommen bei Sparkwright. Was möchten Sie tun?</translation>
    </message>
    <message>
        <source>Choose where to load your profile from.</source>
        <translation>Wählen Sie, woher Ihr Profil geladen werden soll.</translation>
    </message>
    <message>
        <source>Choose what kind of profile to program your CDI with.</source>
        <translation>Wählen Sie, mit welcher Art von Profil Ihre CDI programmiert werden soll.</translation>
    </message>
    <message>
        <source>Select a profile from the dropdown list to program your CDI.</source>
        <translation>Wählen Sie in der Auswahlliste ein Profil, mit dem Ihre CDI programmiert werden soll.</translation>
    </message>
    <message>
        <source>Select a profile from the drop-down list for comparison.</source>
        <translation>Wählen Sie in der Auswahlliste ein Profil für den Vergleich.</translation>
    </message>
    <message>
        <source>Select an item from the drop-down list as template for your custom profile.</source>
        <translation>Wählen Sie in der Auswahlliste eine Vorlage für Ihr eigenes Profil.</translation>
    </message>
    <message>
        <source>Put together the profiles whose ignition maps you would like to compare.</source>
        <translation>Stellen Sie die Profile zusammen, deren Zündkennfelder Sie vergleichen möchten.</translation>
    </message>
    <message>
        <source>{Program the CDI} with selected profile</source>
        <translation>Die CDI mit dem ausgewählten Profil {programmieren}</translation>
    </message>
    <message>
        <source>Add the selected profile to the {comparison}</source>
        <translation>Das ausgewählte Profil zum {Vergleich} hinzufügen</translation>
    </message>
    <message>
        <source>Create {custom profile} from selected template</source>
        <translation>{Eigenes Profil} aus der ausgewählten Vorlage erstellen</translation>
    </message>
    <message>
        <source>Continue editing profile</source>
        <translation>Profil weiter bearbeiten</translation>
    </message>
    <message>
        <source>Program the CDI with the profile recently opened in editor</source>
        <translation>Die CDI mit dem zuletzt im Editor geöffneten Profil programmieren</translation>
    </message>
    <message>
        <source>Click to open the profile in the editor</source>
        <translation>Klicken, um das Profil im Editor zu öffnen</translation>
    </message>
    <message>
        <source>%1 (%2, %3)</source>
        <translation>%1 (%2, %3)</translation>
    </message>
    <message>
        <source>&amp;Customize profiles</source>
        <translation>Profile &amp;anpassen</translation>
    </message>
    <message>
        <source>P&amp;rogram your CDI</source>
        <translation>&amp;Ihre CDI programmieren</translation>
    </message>
    <message>
        <source>&amp;Test connection to CDI</source>
        <translation>&amp;Verbindung zur CDI testen</translation>
    </message>
    <message>
        <source>Co&amp;mpare profiles</source>
        <translation>Profile ver&amp;gleichen</translation>
    </message>
    <message>
        <source>Recently &amp;opened profiles</source>
        <translation>Zu&amp;letzt verwendete Profile</translation>
    </message>
    <message>
        <source>&amp;Create from template</source>
        <translation>Aus &amp;Vorlage erstellen</translation>
    </message>
    <message>
        <source>Load from &amp;file</source>
        <translation>Aus &amp;Datei laden</translation>
    </message>
    <message>
        <source>&amp;Import from CDI</source>
        <translation>Aus CDI &amp;importieren</translation>
    </message>
    <message>
        <source>Use &amp;custom profile</source>
        <translation>&amp;Eigenes Profil verwenden</translation>
    </message>
    <message>
        <source>Use &amp;default profile</source>
        <translation>Standardprofil &amp;verwenden</translation>
    </message>
    <message>
        <source>P&amp;rogram</source>
        <translation>P&amp;rogrammieren</translation>
    </message>
    <message>
        <source>&amp;Add to list</source>
        <translation>Zur &amp;Liste hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Create</source>
        <translation>&amp;Erstellen</translation>
    </message>
    <message>
        <source>Continue &amp;editing</source>
        <translation>W&amp;eiter bearbeiten</translation>
    </message>
    <message>
        <source>C&amp;ontinue</source>
        <translation>Wei&amp;ter</translation>
    </message>
    <message>
        <source>Choose a profile to compare</source>
        <translation>Profil zum Vergleichen auswählen</translation>
    </message>
    <message>
        <source>Choose a profile to program</source>
        <translation>Profil zum Programmieren auswählen</translation>
    </message>
    <message>
        <source>Recently opened profiles</source>
        <translation>Zuletzt verwendete Profile</translation>
    </message>
</context>
<context>
    <name>WriteConfirmationDialog</name>
    <message>
        <source>Program CDI</source>
        <translation>CDI programmieren</translation>
    </message>
    <message>
        <source>&lt;b&gt;Example&lt;/b&gt; (Custom)</source>
        <translation>&lt;b&gt;Beispiel&lt;/b&gt; (Benutzerdefiniert)</translation>
    </message>
    <message>
        <source>Please choose whether your profile should be reimportable from the CDI.</source>
        <translation>Bitte wählen Sie, ob Ihr Profil später wieder aus der CDI importiert werden darf.</translation>
    </message>
    <message>
        <source>&amp;Allow reimporting the profile data</source>
        <translation>Erneuten Import der Profildaten &amp;erlauben</translation>
    </message>
    <message>
        <source>Disable this option to protect your profile data and prevent third parties from importing it from your CDI.</source>
        <translation>Schalten Sie diese Option aus, um Ihre Profildaten zu schützen und zu verhindern, dass Dritte sie aus Ihrer CDI importieren.</translation>
    </message>
    <message>
        <source>&amp;Confirm</source>
        <translation>&amp;Bestätigen</translation>
    </message>
    <message>
        <source>custom</source>
        <translation>eigenes Profil</translation>
    </message>
    <message>
        <source>default</source>
        <translation>Standardprofil</translation>
    </message>
    <message>
        <source>Ca&amp;ncel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>Question</source>
        <translation>Frage</translation>
    </message>
    <message>
        <source>What programming changes</source>
        <translation>Was die Programmierung ändert</translation>
    </message>
</context>
</TS>
