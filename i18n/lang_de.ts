<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
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
        <source>English</source>
        <translation>Englisch</translation>
    </message>
    <message>
        <source>German</source>
        <translation>Deutsch</translation>
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
        <source>Do not show again</source>
        <translation>Nicht mehr anzeigen</translation>
    </message>
    <message>
        <source>Decline</source>
        <translation>Ablehnen</translation>
    </message>
    <message>
        <source>Accept</source>
        <translation>Zustimmen</translation>
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
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>GraphForm</name>
    <message>
        <source>Graph</source>
        <translation>Diagramm</translation>
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
        <source>Side stand blocking</source>
        <translation>Seitenständersperre</translation>
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
        <source>Pick-up transition</source>
        <translation>Geberflanke</translation>
    </message>
    <message>
        <source>positive</source>
        <translation>positiv</translation>
    </message>
    <message>
        <source>negative</source>
        <translation>negativ</translation>
    </message>
    <message>
        <source>Sensor advance</source>
        <translation>Sensorvorzündung</translation>
    </message>
    <message>
        <source>Hall-sensor advance</source>
        <translation>Hallgeber-Vorzündung</translation>
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
        <source>Pulse generator</source>
        <translation>Impulsgeber</translation>
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
</context>
<context>
    <name>TableForm</name>
    <message>
        <source>Sort ascending</source>
        <translation>Aufsteigend sortieren</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
</context>
</TS>
