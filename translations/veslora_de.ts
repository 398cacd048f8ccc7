<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AccentPreviewView</name>
    <message>
        <source>Preview of the island in this accent</source>
        <translation>Vorschau der Insel in diesem Akzent</translation>
    </message>
</context>
<context>
    <name>Accents</name>
    <message>
        <source>%1 accent</source>
        <translation>Akzent %1</translation>
    </message>
    <message>
        <source>Lime</source>
        <translation>Limette</translation>
    </message>
    <message>
        <source>Cyan</source>
        <translation>Cyan</translation>
    </message>
    <message>
        <source>Amber</source>
        <translation>Bernstein</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Weiß</translation>
    </message>
</context>
<context>
    <name>AgentActivity</name>
    <message>
        <source>Edit: %1</source>
        <translation>Bearbeiten: %1</translation>
    </message>
    <message>
        <source>Write: %1</source>
        <translation>Schreiben: %1</translation>
    </message>
    <message>
        <source>Read: %1</source>
        <translation>Lesen: %1</translation>
    </message>
    <message>
        <source>Search: %1</source>
        <translation>Suchen: %1</translation>
    </message>
    <message>
        <source>Web: %1</source>
        <translation>Web: %1</translation>
    </message>
    <message>
        <source>Agent: %1</source>
        <translation>Agent: %1</translation>
    </message>
</context>
<context>
    <name>AgentHooks</name>
    <message>
        <source>Claude Code: hooks and status line</source>
        <translation>Claude Code: Hooks und Statuszeile</translation>
    </message>
    <message>
        <source>Adds a status line (for the usage widget; a status line you already have keeps showing) and six hooks to ~/.claude/settings.json (backed up first) so Veslora knows when a session needs your approval or finishes. Remove takes out only Veslora&apos;s.</source>
        <translation>Trägt eine Statuszeile (für das Widget „Nutzung“; eine schon vorhandene bleibt sichtbar) und sechs Hooks in ~/.claude/settings.json ein (nach einer Sicherung), damit Veslora weiß, wann eine Sitzung eine Freigabe braucht oder fertig ist. „Entfernen“ nimmt nur die Einträge von Veslora heraus.</translation>
    </message>
    <message>
        <source>Without hooks, sessions and their working time still show; approvals don&apos;t.</source>
        <translation>Ohne Hooks erscheinen Sitzungen und Arbeitszeit, aber keine Freigaben.</translation>
    </message>
    <message>
        <source>Couldn&apos;t read ~/.claude/settings.json; nothing was changed.</source>
        <translation>~/.claude/settings.json ist nicht lesbar; nichts wurde geändert.</translation>
    </message>
    <message>
        <source>Codex: hooks</source>
        <translation>Codex: Hooks</translation>
    </message>
    <message>
        <source>Adds eight hooks to ~/.codex/hooks.json (backed up first) so Veslora sees Codex CLI sessions and can answer their approvals. Remove takes out only Veslora&apos;s. Usage needs no install.</source>
        <translation>Trägt acht Hooks in ~/.codex/hooks.json ein (nach einer Sicherung), damit Veslora Sitzungen von Codex CLI sieht und Freigaben beantworten kann. „Entfernen“ nimmt nur diese heraus. Die Nutzung braucht keine Installation.</translation>
    </message>
    <message>
        <source>Then run /hooks in Codex once and trust them: Codex runs new hooks only after you&apos;ve reviewed them.</source>
        <translation>Danach in Codex einmal /hooks aufrufen und ihnen vertrauen: Codex führt neue Hooks erst nach einer Prüfung aus.</translation>
    </message>
    <message>
        <source>Couldn&apos;t read ~/.codex/hooks.json (it must be a JSON object); nothing was changed.</source>
        <translation>~/.codex/hooks.json ist nicht lesbar (es muss ein JSON-Objekt sein); nichts wurde geändert.</translation>
    </message>
    <message>
        <source>Couldn&apos;t read %1: %2. Nothing was changed.</source>
        <translation>%1 war nicht lesbar: %2. Nichts wurde geändert.</translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: %2. Nothing was changed.</source>
        <translation>%1 war nicht schreibbar: %2. Nichts wurde geändert.</translation>
    </message>
</context>
<context>
    <name>AgentHooksSection</name>
    <message>
        <source>Try It</source>
        <translation>Ausprobieren</translation>
    </message>
</context>
<context>
    <name>AgentMessages</name>
    <message>
        <source>Needs your permission</source>
        <translation>Wartet auf Freigabe</translation>
    </message>
    <message>
        <source>Wants to use %1</source>
        <translation>Möchte %1 verwenden</translation>
    </message>
    <message>
        <source>Waiting for you</source>
        <translation>Wartet auf Antwort</translation>
    </message>
</context>
<context>
    <name>AgentStatus</name>
    <message>
        <source>&lt;1M</source>
        <translation>&lt;1M</translation>
    </message>
    <message>
        <source>%1M</source>
        <translation>%1M</translation>
    </message>
    <message>
        <source>%1H%2</source>
        <translation>%1H%2</translation>
    </message>
    <message>
        <source>APPROVE</source>
        <translation>FREIGABE</translation>
    </message>
    <message>
        <source>DONE</source>
        <translation>FERTIG</translation>
    </message>
    <message>
        <source>IDLE</source>
        <translation>RUHT</translation>
    </message>
</context>
<context>
    <name>AlertPauseSettings</name>
    <message>
        <source>While the desktop&apos;s own do-not-disturb is on, prompts go straight to their terminals.</source>
        <translation>Solange „Nicht stören“ der Arbeitsumgebung an ist, gehen Anfragen gleich in ihr Terminal.</translation>
    </message>
    <message>
        <source>Follow Do Not Disturb</source>
        <translation>„Nicht stören“ befolgen</translation>
    </message>
    <message>
        <source>Pause alerts</source>
        <translation>Meldungen anhalten</translation>
    </message>
    <message>
        <source>1 Hour</source>
        <translation>1 Stunde</translation>
    </message>
    <message>
        <source>Until Tomorrow</source>
        <translation>Bis morgen</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
</context>
<context>
    <name>ClaudeLiveActivityView</name>
    <message>
        <source>DONE</source>
        <translation>FERTIG</translation>
    </message>
</context>
<context>
    <name>ClaudeNotice</name>
    <message>
        <source>Approve</source>
        <translation>Freigabe</translation>
    </message>
    <message>
        <source>Jump</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Später</translation>
    </message>
</context>
<context>
    <name>ClaudeRequestAlert</name>
    <message>
        <source>Answer in the terminal</source>
        <translation>Im Terminal antworten</translation>
    </message>
    <message>
        <source>Jump</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <source>Deny</source>
        <translation>Ablehnen</translation>
    </message>
    <message>
        <source>Allow</source>
        <translation>Erlauben</translation>
    </message>
</context>
<context>
    <name>ClaudeSettings</name>
    <message>
        <source>The island drops down when a session waits for your permission.</source>
        <translation>Die Insel klappt herunter, wenn eine Sitzung wartet.</translation>
    </message>
    <message>
        <source>Approval alerts</source>
        <translation>Hinweise auf Freigaben</translation>
    </message>
    <message>
        <source>ALLOW and DENY in the island when you&apos;re not in the session&apos;s app; the terminal prompt shows after 20 s.</source>
        <translation>ERLAUBEN und ABLEHNEN in der Insel, solange die App der Sitzung nicht vorn ist; die Anfrage im Terminal erscheint nach 20&#xa0;s.</translation>
    </message>
    <message>
        <source>Answer approvals from the island</source>
        <translation>Freigaben in der Insel beantworten</translation>
    </message>
    <message>
        <source>Plays once for each new request.</source>
        <translation>Ertönt einmal bei jeder neuen Anfrage.</translation>
    </message>
    <message>
        <source>Sound for approvals</source>
        <translation>Ton bei Freigaben</translation>
    </message>
    <message>
        <source>Shows DONE beside the notch for a few seconds when a session finishes.</source>
        <translation>Zeigt einige Sekunden lang FERTIG neben der Notch, wenn eine Sitzung fertig ist.</translation>
    </message>
    <message>
        <source>Finished turns</source>
        <translation>Fertige Sitzungen</translation>
    </message>
    <message>
        <source>The agent&apos;s spinner beside the notch while a session works, when no timer or music is showing.</source>
        <translation>Das Zeichen des Agenten neben der Notch, während eine Sitzung arbeitet und weder Timer noch Musik zu sehen ist.</translation>
    </message>
    <message>
        <source>Working live activity</source>
        <translation>Live-Aktivität bei der Arbeit</translation>
    </message>
</context>
<context>
    <name>ClaudeUsageWidget</name>
    <message>
        <source>Usage</source>
        <translation>Nutzung</translation>
    </message>
</context>
<context>
    <name>ClaudeWidget</name>
    <message>
        <source>No sessions</source>
        <translation>Keine Sitzungen</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>usage: veslora %1</source>
        <translation>Aufruf: veslora %1</translation>
    </message>
    <message>
        <source>The Veslora that runs could not do that.</source>
        <translation>Das laufende Veslora konnte das nicht ausführen.</translation>
    </message>
    <message>
        <source>Veslora is not running.</source>
        <translation>Veslora läuft nicht.</translation>
    </message>
    <message>
        <source>Veslora is running but does not answer.</source>
        <translation>Veslora läuft, antwortet aber nicht.</translation>
    </message>
    <message>
        <source>What answers in Veslora&apos;s place is another program, or another version of it.</source>
        <translation>Anstelle von Veslora antwortet ein anderes Programm oder eine andere Version.</translation>
    </message>
    <message>
        <source>Veslora was told to quit, but is still running.</source>
        <translation>Veslora sollte sich beenden, läuft aber noch.</translation>
    </message>
    <message>
        <source>The settings window can&apos;t be made.</source>
        <translation>Das Fenster der Einstellungen lässt sich nicht öffnen.</translation>
    </message>
    <message>
        <source>The island is not on screen.</source>
        <translation>Die Insel ist nicht auf dem Bildschirm.</translation>
    </message>
    <message>
        <source>The session bus does not answer.</source>
        <translation>Der Sitzungsbus antwortet nicht.</translation>
    </message>
    <message>
        <source>Veslora needs an X server, or a Wayland desktop with XWayland.</source>
        <translation>Veslora braucht einen X-Server oder einen Wayland-Desktop mit XWayland.</translation>
    </message>
    <message>
        <source>Veslora can&apos;t use its folder %1: %2.</source>
        <translation>Veslora kann seinen Ordner %1 nicht verwenden: %2.</translation>
    </message>
    <message>
        <source>the length of a pause is such as 30m, 1h or 2h30m, from 1m to 168h, or tomorrow</source>
        <translation>die Länge einer Pause ist etwa 30m, 1h oder 2h30m, von 1m bis 168h, oder tomorrow</translation>
    </message>
    <message>
        <source>
Without a word Veslora starts; if it runs already, it opens its settings.
The other words work from a shell without a display too. Those of the first
list ask the one that runs:

  settings       open the settings window
  toggle         open the island until the pointer has been in it and has left
                 it, or, if it is open, close it
  page next      turn to the next page of widgets; one that is closed opens on
                 it, as by toggle; the last page stays
  page previous  the same for the page before; the first page stays
  edit           open the island and edit its widgets, or end that
  pause          pause alerts for an hour: until then permission prompts go
                 straight to their terminals. &quot;pause 30m&quot;, &quot;pause 2h30m&quot; or
                 &quot;pause tomorrow&quot; say how long: from 1m to 168h, or until the
                 first 6 o&apos;clock in the morning that is over three hours ahead
  resume         end that
  quit           end it, and wait until it is gone; a permission prompt that
                 waits in the island goes on in its terminal
  status         print one line of JSON:
                   island    &quot;closed&quot; or &quot;open&quot;
                   shows     &quot;rack&quot; while it is open, else what it shows closed:
                             &quot;timerAlert&quot;, &quot;claudeAlert&quot;, &quot;claudeFinished&quot;,
                             &quot;metronome&quot;, &quot;timer&quot;, &quot;music&quot;, &quot;claudeWorking&quot;,
                             &quot;keepAwake&quot; or &quot;none&quot;
                   sessions  how many of both agents&apos; are &quot;working&quot;,
                             &quot;needsApproval&quot;, &quot;finished&quot; and &quot;idle&quot;
                   pausedUntil  until when alerts are paused by you, in seconds
                             since 1970; only while they are

Those of the second list serve also while it does not run:

  get            print the setting KEY; without one all of them, each on a line
                 with its value, its default and what it may be, and tabs
                 between
  set            give the setting KEY the value VALUE
  export         print the settings that differ from their defaults as JSON;
                 with &quot;--all&quot; the others too
  import         take over the settings of such a text from FILE, or from
                 standard input; nothing of one in which anything is wrong
  hooks install  put hooks into the configuration of AGENT, &quot;claude&quot; or &quot;codex&quot;,
                 or of both, as the tab &quot;Agents&quot; does
  hooks remove   take them out; agents that run go on working
  hooks status   print a line on how they stand

  report         print what a report of a fault needs: versions, desktop,
                 screens, services and whether the agents&apos; hooks are in; nothing
                 private

  --verbose      start, and tell on standard error what is decided and what
                 fails
  --help         print this
  --version      print the version

The status is 0 when it was done, 1 when it could not be done or Veslora is
not running, 2 for any other words, and 3 when hooks are not installed.
</source>
        <translation>
Ohne ein Wort startet Veslora; läuft es schon, öffnet es seine Einstellungen.
Die anderen Wörter gelten auch in einer Shell ohne Bildschirm. Die der ersten
Liste fragen das laufende Programm:

  settings       das Fenster der Einstellungen öffnen
  toggle         die Insel öffnen, bis der Zeiger in ihr war und sie verlassen
                 hat, oder sie schließen, wenn sie offen ist
  page next      zur nächsten Seite der Widgets blättern; eine geschlossene
                 Insel öffnet sich dabei wie mit toggle; die letzte Seite bleibt
  page previous  dasselbe zur vorigen Seite; die erste Seite bleibt
  edit           die Insel öffnen und ihre Widgets bearbeiten, oder das beenden
  pause          Meldungen für eine Stunde anhalten: bis dahin gehen Anfragen
                 gleich in ihr Terminal. &quot;pause 30m&quot;, &quot;pause 2h30m&quot; oder
                 &quot;pause tomorrow&quot; sagen, wie lange: von 1m bis 168h, oder bis
                 zum ersten 6 Uhr morgens, das mehr als drei Stunden entfernt ist
  resume         das beenden
  quit           das Programm beenden und warten, bis es fort ist; eine Anfrage,
                 die in der Insel wartet, geht in ihrem Terminal weiter
  status         eine Zeile JSON ausgeben:
                   island    &quot;closed&quot; oder &quot;open&quot;
                   shows     &quot;rack&quot;, solange sie offen ist, sonst das, was sie
                             geschlossen zeigt:
                             &quot;timerAlert&quot;, &quot;claudeAlert&quot;, &quot;claudeFinished&quot;,
                             &quot;metronome&quot;, &quot;timer&quot;, &quot;music&quot;, &quot;claudeWorking&quot;,
                             &quot;keepAwake&quot; oder &quot;none&quot;
                   sessions  wie viele Sitzungen beider Agenten &quot;working&quot;,
                             &quot;needsApproval&quot;, &quot;finished&quot; und &quot;idle&quot; sind
                   pausedUntil  bis wann Meldungen angehalten sind, in Sekunden
                             seit 1970; nur solange sie es sind

Die der zweiten Liste gelten auch, solange es nicht läuft:

  get            die Einstellung KEY ausgeben; ohne eine alle, jede in einer
                 Zeile mit Wert, Vorgabe und dem, was sie sein darf, dazwischen
                 Tabulatoren
  set            der Einstellung KEY den Wert VALUE geben
  export         die Einstellungen, die von ihrer Vorgabe abweichen, als JSON
                 ausgeben; mit &quot;--all&quot; auch die anderen
  import         die Einstellungen eines solchen Textes aus FILE oder von der
                 Standardeingabe übernehmen; nichts, wenn darin etwas falsch ist
  hooks install  Hooks in die Konfiguration von AGENT, &quot;claude&quot; oder &quot;codex&quot;,
                 eintragen, oder in beide, wie der Reiter &quot;Agenten&quot; es tut
  hooks remove   sie herausnehmen; laufende Agenten arbeiten weiter
  hooks status   in einer Zeile ausgeben, wie es um sie steht

  report         ausgeben, was eine Fehlermeldung braucht: Versionen, Desktop,
                 Bildschirme, Dienste und ob die Hooks der Agenten installiert
                 sind; nichts Privates

  --verbose      starten und auf der Fehlerausgabe sagen, was entschieden wird
                 und was misslingt
  --help         dies ausgeben
  --version      die Version ausgeben

Der Status ist 0, wenn es getan ist, 1, wenn es nicht ging oder Veslora nicht
läuft, 2 bei allen anderen Wörtern und 3, wenn Hooks nicht installiert sind.
</translation>
    </message>
    <message>
        <source>Can&apos;t read %1: %2.</source>
        <translation>%1 ist nicht lesbar: %2.</translation>
    </message>
    <message>
        <source>standard input</source>
        <translation>die Standardeingabe</translation>
    </message>
</context>
<context>
    <name>ContextMenu</name>
    <message>
        <source>Close the menu</source>
        <translation>Menü schließen</translation>
    </message>
</context>
<context>
    <name>Displays</name>
    <message>
        <source>Main display</source>
        <translation>Hauptbildschirm</translation>
    </message>
    <message>
        <source>Built-in display</source>
        <translation>Eingebauter Bildschirm</translation>
    </message>
</context>
<context>
    <name>EditHeader</name>
    <message>
        <source>Edit widgets</source>
        <translation>Widgets bearbeiten</translation>
    </message>
    <message>
        <source>+ Add</source>
        <translation>+ Widget</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
</context>
<context>
    <name>EditSpacingKeys</name>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Closer together</source>
        <translation>Enger zusammen</translation>
    </message>
    <message>
        <source>−</source>
        <translation>−</translation>
    </message>
    <message>
        <source>Space between widgets; scroll to change</source>
        <translation>Abstand zwischen Widgets; zum Ändern scrollen</translation>
    </message>
    <message>
        <source>Further apart</source>
        <translation>Weiter auseinander</translation>
    </message>
    <message>
        <source>+</source>
        <translation>+</translation>
    </message>
</context>
<context>
    <name>EditTray</name>
    <message>
        <source>Spacing</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>Accent</source>
        <translation>Akzent</translation>
    </message>
</context>
<context>
    <name>EditableModule</name>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>FileReasons</name>
    <message>
        <source>another program has just changed it</source>
        <translation>ein anderes Programm hat sie gerade geändert</translation>
    </message>
    <message>
        <source>it has a second name (a hard link) that would keep the old text</source>
        <translation>sie hat einen zweiten Namen (harter Link), der den alten Text behielte</translation>
    </message>
    <message>
        <source>its access list or attributes couldn&apos;t be kept</source>
        <translation>Zugriffsliste oder Attribute wären verloren gegangen</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>der Datenträger ist schreibgeschützt</translation>
    </message>
    <message>
        <source>it belongs to somebody else or may not be changed</source>
        <translation>sie gehört jemand anderem oder darf nicht geändert werden</translation>
    </message>
    <message>
        <source>it is a link or no folder</source>
        <translation>ein Link oder kein Ordner</translation>
    </message>
    <message>
        <source>it is too large</source>
        <translation>sie ist zu groß</translation>
    </message>
</context>
<context>
    <name>GeneralSettings</name>
    <message>
        <source>Keeps the island out of the way of videos, games and presentations. A timer&apos;s done alert still shows.</source>
        <translation>Hält die Insel aus Videos, Spielen und Präsentationen heraus. Das Ende eines Timers wird trotzdem gezeigt.</translation>
    </message>
    <message>
        <source>Hide when an app is fullscreen</source>
        <translation>Bei Vollbild-Apps ausblenden</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Quit Veslora</source>
        <translation>Veslora beenden</translation>
    </message>
    <message>
        <source>Start Veslora automatically when you log in.</source>
        <translation>Veslora bei der Anmeldung automatisch starten.</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Bei der Anmeldung starten</translation>
    </message>
    <message>
        <source>Veslora checks once a day and asks before installing.</source>
        <translation>Veslora sucht einmal am Tag und fragt vor der Installation.</translation>
    </message>
    <message>
        <source>New versions come with your system&apos;s updates.</source>
        <translation>Neue Versionen kommen mit den Aktualisierungen des Systems.</translation>
    </message>
    <message>
        <source>Check for updates automatically</source>
        <translation>Automatisch nach Aktualisierungen suchen</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Jetzt suchen</translation>
    </message>
</context>
<context>
    <name>HooksCommand</name>
    <message>
        <source>%1: the hooks are in.</source>
        <translation>%1: Die Hooks sind eingetragen.</translation>
    </message>
    <message>
        <source>%1: the hooks are in. Run /hooks in it and trust them.</source>
        <translation>%1: Die Hooks sind eingetragen. Dort /hooks aufrufen und ihnen vertrauen.</translation>
    </message>
    <message>
        <source>%1: the hooks are out. Sessions that run go on working, and ask in their terminals.</source>
        <translation>%1: Die Hooks sind herausgenommen. Laufende Sitzungen arbeiten weiter und fragen in ihren Terminals.</translation>
    </message>
</context>
<context>
    <name>IslandSettings</name>
    <message>
        <source>Without a notched display (lid closed), the island uses the main display.</source>
        <translation>Ohne Bildschirm mit Notch (Deckel geschlossen) nutzt die Insel den Hauptbildschirm.</translation>
    </message>
    <message>
        <source>Show on</source>
        <translation>Anzeigen auf</translation>
    </message>
    <message>
        <source>Accent</source>
        <translation>Akzent</translation>
    </message>
    <message>
        <source>How long the pointer rests on the notch before the island opens.</source>
        <translation>So lange ruht der Zeiger auf der Notch, bis sich die Insel öffnet.</translation>
    </message>
    <message>
        <source>Open on hover after</source>
        <translation>Öffnen nach</translation>
    </message>
    <message>
        <source>%1 s</source>
        <extracomment>seconds</extracomment>
        <translation>%1&#xa0;s</translation>
    </message>
    <message>
        <source>Widgets spread out to fill the island. Turn off to set the space between them yourself.</source>
        <translation>Widgets verteilen sich über die ganze Insel. Ausgeschaltet lässt sich der Abstand selbst wählen.</translation>
    </message>
    <message>
        <source>Automatic spacing</source>
        <translation>Automatischer Abstand</translation>
    </message>
    <message>
        <source>The island resizes to fit.</source>
        <translation>Die Insel passt ihre Größe an.</translation>
    </message>
    <message>
        <source>Space between widgets</source>
        <translation>Abstand zwischen Widgets</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musik</translation>
    </message>
    <message>
        <source>Timer</source>
        <translation>Timer</translation>
    </message>
    <message>
        <source>Which one shows beside the notch when music plays during a timer. A finished timer always shows.</source>
        <translation>Was neben der Notch erscheint, wenn während eines Timers Musik läuft. Ein abgelaufener Timer erscheint immer.</translation>
    </message>
    <message>
        <source>Live activity priority</source>
        <translation>Vorrang bei Live-Aktivität</translation>
    </message>
</context>
<context>
    <name>KeepAwake</name>
    <message>
        <source>%1M</source>
        <translation>%1M</translation>
    </message>
</context>
<context>
    <name>KeepAwakeAgentKey</name>
    <message>
        <source>Staying awake while an agent is working</source>
        <translation>Bleibt wach, während ein Agent arbeitet</translation>
    </message>
    <message>
        <source>Stay awake while an agent is working</source>
        <translation>Wach bleiben, während ein Agent arbeitet</translation>
    </message>
    <message>
        <source>Agents</source>
        <translation>Agenten</translation>
    </message>
</context>
<context>
    <name>KeepAwakeSettings</name>
    <message>
        <source>During a Keep Awake session the screen doesn&apos;t dim or sleep either.</source>
        <translation>Während „Wach halten“ läuft, wird auch der Bildschirm weder dunkler noch schaltet er sich ab.</translation>
    </message>
    <message>
        <source>Keep the display on</source>
        <translation>Bildschirm eingeschaltet lassen</translation>
    </message>
    <message>
        <source>Stay awake while an agent is working</source>
        <translation>Wach bleiben, während ein Agent arbeitet</translation>
    </message>
    <message>
        <source>The time left beside the notch during a session.</source>
        <translation>Die verbleibende Zeit neben der Notch, solange es läuft.</translation>
    </message>
    <message>
        <source>Show a live activity</source>
        <translation>Live-Aktivität zeigen</translation>
    </message>
</context>
<context>
    <name>KeepAwakeWidget</name>
    <message>
        <source>Keep Awake</source>
        <translation>Wach halten</translation>
    </message>
    <message>
        <source>Awake</source>
        <translation>Wach</translation>
    </message>
    <message>
        <source>Scroll to change the time</source>
        <translation>Zum Ändern der Zeit scrollen</translation>
    </message>
    <message>
        <source>15 minutes less</source>
        <translation>15 Minuten weniger</translation>
    </message>
    <message>
        <source>−</source>
        <translation>−</translation>
    </message>
    <message>
        <source>15 minutes more</source>
        <translation>15 Minuten mehr</translation>
    </message>
    <message>
        <source>+</source>
        <translation>+</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
</context>
<context>
    <name>Meters</name>
    <message>
        <source>USER %1 · SYS %2</source>
        <translation>NUTZER %1 · SYS %2</translation>
    </message>
    <message>
        <source>CALCULATING…</source>
        <translation>WIRD BERECHNET …</translation>
    </message>
    <message>
        <source>CHARGING · %1 TO FULL</source>
        <translation>LÄDT · VOLL IN %1</translation>
    </message>
    <message>
        <source>ON POWER</source>
        <translation>NETZBETRIEB</translation>
    </message>
    <message>
        <source>%1 LEFT</source>
        <translation>NOCH %1</translation>
    </message>
</context>
<context>
    <name>MetersWidget</name>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
</context>
<context>
    <name>MetronomeLiveActivityView</name>
    <message>
        <source>%1 beats per minute</source>
        <translation>%1 Schläge pro Minute</translation>
    </message>
</context>
<context>
    <name>MetronomeSettings</name>
    <message>
        <source>Sound</source>
        <translation>Klang</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Lautstärke</translation>
    </message>
    <message>
        <source>The first beat of each bar plays higher.</source>
        <translation>Der erste Schlag jedes Takts klingt höher.</translation>
    </message>
    <message>
        <source>Downbeat accent</source>
        <translation>Erster Schlag betont</translation>
    </message>
</context>
<context>
    <name>MetronomeSounds</name>
    <message>
        <source>Click</source>
        <translation>Klick</translation>
    </message>
    <message>
        <source>Woodblock</source>
        <translation>Holzblock</translation>
    </message>
    <message>
        <source>Hi-hat</source>
        <translation>Hi-Hat</translation>
    </message>
    <message>
        <source>Beep</source>
        <translation>Piep</translation>
    </message>
    <message>
        <source>Silent</source>
        <translation>Stumm</translation>
    </message>
</context>
<context>
    <name>MetronomeTempo</name>
    <message>
        <source>BPM</source>
        <translation>BPM</translation>
    </message>
    <message>
        <source>Scroll to change the tempo</source>
        <translation>Zum Ändern des Tempos scrollen</translation>
    </message>
</context>
<context>
    <name>MetronomeWidget</name>
    <message>
        <source>Metronome</source>
        <translation>Metronom</translation>
    </message>
    <message>
        <source>Change the time signature</source>
        <translation>Taktart ändern</translation>
    </message>
    <message>
        <source>Tap the tempo</source>
        <translation>Tempo tippen</translation>
    </message>
    <message>
        <source>Tap</source>
        <translation>Tippen</translation>
    </message>
    <message>
        <source>Slower</source>
        <translation>Langsamer</translation>
    </message>
    <message>
        <source>Faster</source>
        <translation>Schneller</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
</context>
<context>
    <name>ModuleActions</name>
    <message>
        <source>move left</source>
        <translation>nach links</translation>
    </message>
    <message>
        <source>move right</source>
        <translation>nach rechts</translation>
    </message>
    <message>
        <source>to previous page</source>
        <translation>zur vorigen Seite</translation>
    </message>
    <message>
        <source>to next page</source>
        <translation>zur nächsten Seite</translation>
    </message>
    <message>
        <source>make small</source>
        <translation>verkleinern</translation>
    </message>
    <message>
        <source>make wide</source>
        <translation>verbreitern</translation>
    </message>
    <message>
        <source>remove</source>
        <translation>entfernen</translation>
    </message>
</context>
<context>
    <name>MusicKeys</name>
    <message>
        <source>Previous</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
</context>
<context>
    <name>MusicSettings</name>
    <message>
        <source>Show other apps</source>
        <translation>Andere Apps zeigen</translation>
    </message>
    <message>
        <source>Cover and level bars beside the notch while music plays.</source>
        <translation>Cover und Pegel neben der Notch, während Musik läuft.</translation>
    </message>
    <message>
        <source>Music live activity</source>
        <translation>Live-Aktivität bei Musik</translation>
    </message>
    <message>
        <source>Control Spotify</source>
        <translation>Spotify steuern</translation>
    </message>
</context>
<context>
    <name>MusicWidget</name>
    <message>
        <source>Open Spotify</source>
        <translation>Spotify öffnen</translation>
    </message>
</context>
<context>
    <name>PageDots</name>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
</context>
<context>
    <name>PlatformTexts</name>
    <message>
        <source>While a Claude Code or Codex session is working, your computer doesn&apos;t sleep. The screen can still dim.</source>
        <translation>Während eine Sitzung von Claude Code oder Codex arbeitet, geht der Computer nicht in den Ruhezustand. Der Bildschirm darf trotzdem dunkler werden.</translation>
    </message>
    <message>
        <source>Closing the lid still puts your computer to sleep.</source>
        <translation>Das Schließen des Deckels schickt den Computer weiterhin in den Ruhezustand.</translation>
    </message>
    <message>
        <source>Also posts a desktop notification, so you see it even when you&apos;re not looking at the notch.</source>
        <translation>Schickt auch eine Benachrichtigung des Desktops, die abseits der Notch zu sehen ist.</translation>
    </message>
    <message>
        <source>When Spotify isn&apos;t playing, show browsers and other players. Spotify always comes first.</source>
        <translation>Wenn Spotify nichts abspielt, Browser und andere Player zeigen. Spotify hat immer Vorrang.</translation>
    </message>
</context>
<context>
    <name>PowerAssertions</name>
    <message>
        <source>Veslora: Claude Code is working</source>
        <translation>Veslora: Claude Code arbeitet</translation>
    </message>
    <message>
        <source>Veslora: Keep Awake</source>
        <translation>Veslora: Wach halten</translation>
    </message>
</context>
<context>
    <name>RackView</name>
    <message>
        <source>No widgets · hold or right-click to edit</source>
        <translation>Keine Widgets · halten oder Rechtsklick</translation>
    </message>
    <message>
        <source>Edit Widgets</source>
        <translation>Widgets bearbeiten</translation>
    </message>
</context>
<context>
    <name>RunningTimerView</name>
    <message>
        <source>Paused</source>
        <translation>Pausiert</translation>
    </message>
    <message>
        <source>Timer</source>
        <translation>Timer</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Add a minute</source>
        <translation>Eine Minute mehr</translation>
    </message>
    <message>
        <source>Add 5 minutes</source>
        <translation>5 Minuten mehr</translation>
    </message>
    <message>
        <source>Cancel the timer</source>
        <translation>Timer abbrechen</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>a number from %1 on</source>
        <translation>eine Zahl ab %1</translation>
    </message>
    <message>
        <source>a whole number from %1 to %2</source>
        <translation>eine ganze Zahl von %1 bis %2</translation>
    </message>
    <message>
        <source>a number from %1 to %2</source>
        <translation>eine Zahl von %1 bis %2</translation>
    </message>
    <message>
        <source>one of %1</source>
        <translation>eines von %1</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true oder false</translation>
    </message>
    <message>
        <source>names of widgets with commas between them, each once and with a size only where that is not its usual one</source>
        <translation>Namen von Widgets mit Kommas dazwischen, jeder einmal und mit einer Größe nur, wenn sie nicht die übliche ist</translation>
    </message>
    <message>
        <source>the name of a connector, of up to 255 bytes without controls</source>
        <translation>der Name eines Anschlusses mit bis zu 255 Bytes ohne Steuerzeichen</translation>
    </message>
    <message>
        <source>The text is too long to be one of settings.</source>
        <translation>Der Text ist zu lang für Einstellungen.</translation>
    </message>
    <message>
        <source>The text is not a JSON object.</source>
        <translation>Der Text ist kein JSON-Objekt.</translation>
    </message>
    <message>
        <source>%1: there is no such setting.</source>
        <translation>%1: Diese Einstellung gibt es nicht.</translation>
    </message>
    <message>
        <source>%1: it is there more than once.</source>
        <translation>%1: Das kommt mehr als einmal vor.</translation>
    </message>
    <message>
        <source>%1: it must be %2.</source>
        <translation>%1: Erlaubt ist: %2.</translation>
    </message>
    <message>
        <source>%1: that is no setting. &quot;veslora pause&quot; and &quot;veslora resume&quot; change it.</source>
        <translation>%1: Das ist keine Einstellung. „veslora pause“ und „veslora resume“ ändern es.</translation>
    </message>
</context>
<context>
    <name>SettingsCommand</name>
    <message>
        <source>The settings couldn&apos;t be written: %1.</source>
        <translation>Die Einstellungen waren nicht schreibbar: %1.</translation>
    </message>
</context>
<context>
    <name>SettingsScrollBar</name>
    <message>
        <source>Scroll</source>
        <translation>Scrollen</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Island</source>
        <translation>Insel</translation>
    </message>
    <message>
        <source>Timer</source>
        <translation>Timer</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musik</translation>
    </message>
    <message>
        <source>Metronome</source>
        <translation>Metronom</translation>
    </message>
    <message>
        <source>Agents</source>
        <translation>Agenten</translation>
    </message>
    <message>
        <source>Keep Awake</source>
        <translation>Wach halten</translation>
    </message>
    <message>
        <source>Veslora Settings</source>
        <translation>Veslora – Einstellungen</translation>
    </message>
</context>
<context>
    <name>StatusMenu</name>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen&#xa0;…</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Aktualisierungen suchen&#xa0;…</translation>
    </message>
    <message>
        <source>Quit Veslora</source>
        <translation>Veslora beenden</translation>
    </message>
    <message>
        <source>Resume Alerts</source>
        <translation>Meldungen fortsetzen</translation>
    </message>
    <message>
        <source>Pause Alerts for 1 Hour</source>
        <translation>Meldungen für 1 Stunde anhalten</translation>
    </message>
    <message>
        <source>Pause Alerts Until Tomorrow</source>
        <translation>Meldungen bis morgen anhalten</translation>
    </message>
</context>
<context>
    <name>SupportLock</name>
    <message>
        <source>it is a link</source>
        <translation>er ist ein Link</translation>
    </message>
    <message>
        <source>it is not a folder</source>
        <translation>er ist kein Ordner</translation>
    </message>
    <message>
        <source>it belongs to another user</source>
        <translation>er gehört einem anderen Benutzer</translation>
    </message>
</context>
<context>
    <name>TimerDoneAlertView</name>
    <message>
        <source>DONE</source>
        <translation>FERTIG</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Noch mal</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>The timer is done. Restart or Dismiss.</source>
        <translation>Der Timer ist fertig. Noch mal oder Schließen.</translation>
    </message>
</context>
<context>
    <name>TimerLength</name>
    <message>
        <source>%1 hr</source>
        <translation>%1&#xa0;Std.</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1&#xa0;Min.</translation>
    </message>
    <message>
        <source>%1 sec</source>
        <translation>%1&#xa0;Sek.</translation>
    </message>
    <message>
        <source>, </source>
        <translation>, </translation>
    </message>
</context>
<context>
    <name>TimerNotifier</name>
    <message>
        <source>Your %1 timer finished.</source>
        <translation>Der Timer über %1 ist abgelaufen.</translation>
    </message>
    <message>
        <source>Timer done</source>
        <translation>Timer fertig</translation>
    </message>
</context>
<context>
    <name>TimerPickerView</name>
    <message>
        <source>Scroll to set</source>
        <translation>Scrollen</translation>
    </message>
    <message>
        <source>Scroll to change the time</source>
        <translation>Zum Ändern der Zeit scrollen</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
</context>
<context>
    <name>TimerSettings</name>
    <message>
        <source>Sound when done</source>
        <translation>Ton am Ende</translation>
    </message>
    <message>
        <source>Notify when a timer ends</source>
        <translation>Am Ende eines Timers benachrichtigen</translation>
    </message>
</context>
<context>
    <name>TimerSounds</name>
    <message>
        <source>Glass</source>
        <translation>Glas</translation>
    </message>
    <message>
        <source>Ping</source>
        <translation>Ping</translation>
    </message>
    <message>
        <source>Hero</source>
        <translation>Held</translation>
    </message>
    <message>
        <source>Submarine</source>
        <translation>U-Boot</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keiner</translation>
    </message>
</context>
<context>
    <name>UpdateView</name>
    <message>
        <source>Veslora Update</source>
        <translation>Veslora-Aktualisierung</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>Skip This Version</source>
        <translation>Version auslassen</translation>
    </message>
    <message>
        <source>Copy Command</source>
        <translation>Befehl kopieren</translation>
    </message>
    <message>
        <source>Install Update</source>
        <translation>Installieren</translation>
    </message>
</context>
<context>
    <name>Usage</name>
    <message>
        <source>of %1</source>
        <translation>von %1</translation>
    </message>
    <message>
        <source>%1K</source>
        <translation>%1K</translation>
    </message>
    <message>
        <source>%1M</source>
        <translation>%1M</translation>
    </message>
</context>
<context>
    <name>WidgetLibraryRow</name>
    <message>
        <source>Add</source>
        <translation>Einfügen</translation>
    </message>
</context>
<context>
    <name>WidgetLibraryView</name>
    <message>
        <source>Add widget</source>
        <translation>Widget einfügen</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
</context>
<context>
    <name>Widgets</name>
    <message>
        <source>Clock</source>
        <translation>Uhr</translation>
    </message>
    <message>
        <source>Timer</source>
        <translation>Timer</translation>
    </message>
    <message>
        <source>Meters</source>
        <translation>Messwerte</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musik</translation>
    </message>
    <message>
        <source>Metronome</source>
        <translation>Metronom</translation>
    </message>
    <message>
        <source>Agents</source>
        <translation>Agenten</translation>
    </message>
    <message>
        <source>Agent Usage</source>
        <translation>Agenten-Nutzung</translation>
    </message>
    <message>
        <source>Keep Awake</source>
        <translation>Wach halten</translation>
    </message>
</context>
<context>
    <name>veslora::AgentHooksPresenter</name>
    <message>
        <source>Installed</source>
        <translation>Installiert</translation>
    </message>
    <message>
        <source>Needs update</source>
        <translation>Veraltet</translation>
    </message>
    <message>
        <source>Not installed</source>
        <translation>Nicht installiert</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
</context>
<context>
    <name>veslora::AgentSignPresenter</name>
    <message>
        <source>a session began</source>
        <translation>eine Sitzung hat begonnen</translation>
    </message>
    <message>
        <source>a prompt was sent</source>
        <translation>eine Eingabe wurde gesendet</translation>
    </message>
    <message>
        <source>a tool was started</source>
        <translation>ein Werkzeug wurde gestartet</translation>
    </message>
    <message>
        <source>a tool has ended</source>
        <translation>ein Werkzeug ist fertig</translation>
    </message>
    <message>
        <source>a permission was asked for</source>
        <translation>eine Freigabe wurde angefragt</translation>
    </message>
    <message>
        <source>a session waits</source>
        <translation>eine Sitzung wartet</translation>
    </message>
    <message>
        <source>a turn has ended</source>
        <translation>eine Antwort ist fertig</translation>
    </message>
    <message>
        <source>a session has ended</source>
        <translation>eine Sitzung ist zu Ende</translation>
    </message>
    <message>
        <source>something was told</source>
        <translation>etwas wurde gemeldet</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>It works: you allowed it. Nothing was run.</source>
        <translation>Es funktioniert: erlaubt. Nichts wurde ausgeführt.</translation>
    </message>
    <message>
        <source>It works: you denied it.</source>
        <translation>Es funktioniert: abgelehnt.</translation>
    </message>
    <message>
        <source>No answer: an agent would ask in its terminal now.</source>
        <translation>Keine Antwort: Ein Agent würde jetzt in seinem Terminal fragen.</translation>
    </message>
    <message>
        <source>The prompt went straight to the terminal: answering from the island is off or paused.</source>
        <translation>Die Anfrage ging direkt ans Terminal: Antworten in der Insel ist aus oder pausiert.</translation>
    </message>
    <message>
        <source>The script in Veslora&apos;s folder couldn&apos;t be run.</source>
        <translation>Das Skript im Ordner von Veslora ließ sich nicht ausführen.</translation>
    </message>
    <message>
        <source>%1 has not been told to trust the hooks: run /hooks in it.</source>
        <translation>%1 vertraut den Hooks noch nicht: dort /hooks aufrufen.</translation>
    </message>
    <message>
        <source>Last event: %1, %2.</source>
        <translation>Letztes Ereignis: %1, %2.</translation>
    </message>
    <message>
        <source>No event yet: the next thing a session does shows here.</source>
        <translation>Noch kein Ereignis: Was eine Sitzung als Nächstes tut, erscheint hier.</translation>
    </message>
    <message>
        <source>A made-up prompt is on the island: answer it there.</source>
        <translation>Eine Probeanfrage ist auf der Insel: dort beantworten.</translation>
    </message>
</context>
<context>
    <name>veslora::AlertPausePresenter</name>
    <message>
        <source>Prompts go straight to their terminals for a while.</source>
        <translation>Anfragen gehen eine Zeit lang gleich in ihr Terminal.</translation>
    </message>
    <message>
        <source>Paused until %1.</source>
        <translation>Angehalten bis %1.</translation>
    </message>
    <message>
        <source>Paused until tomorrow, %1.</source>
        <translation>Angehalten bis morgen, %1.</translation>
    </message>
    <message>
        <source>Paused until %1, %2.</source>
        <extracomment>A day such as &quot;Sat 21 Nov&quot;, and a time of it</extracomment>
        <translation>Angehalten bis %1, %2.</translation>
    </message>
</context>
<context>
    <name>veslora::ClaudeRequestPresenter</name>
    <message>
        <source>Approve</source>
        <translation>Freigabe</translation>
    </message>
    <message>
        <source>Approve · %1</source>
        <translation>Freigabe · %1</translation>
    </message>
    <message>
        <source>Couldn&apos;t answer</source>
        <translation>Nicht beantwortet</translation>
    </message>
    <message>
        <source>Can&apos;t be shown in full · use Jump</source>
        <translation>Unvollständig · „Terminal“</translation>
    </message>
    <message>
        <source>Too long to show here · use Jump</source>
        <translation>Zu lang · „Terminal“ wählen</translation>
    </message>
    <message numerus="yes">
        <source>+%Ln waiting</source>
        <translation>
            <numerusform>+%Ln wartet</numerusform>
            <numerusform>+%Ln warten</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 asks in %2: %3</source>
        <translation>%1 fragt in %2: %3</translation>
    </message>
    <message>
        <source>Jump, Deny or Allow.</source>
        <translation>Terminal, Ablehnen oder Erlauben.</translation>
    </message>
    <message>
        <source>Too long to show here: Jump or Deny.</source>
        <translation>Zu lang für hier: Terminal oder Ablehnen.</translation>
    </message>
    <message numerus="yes">
        <source>%n seconds to answer.</source>
        <translation>
            <numerusform>%n Sekunde für die Antwort.</numerusform>
            <numerusform>%n Sekunden für die Antwort.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1. %2 %3</source>
        <translation>%1. %2 %3</translation>
    </message>
</context>
<context>
    <name>veslora::ClaudeUsageWidgetPresenter</name>
    <message>
        <source>CTX</source>
        <translation>KTX</translation>
    </message>
    <message>
        <source>5H</source>
        <translation>5H</translation>
    </message>
    <message>
        <source>WK</source>
        <translation>WO</translation>
    </message>
    <message>
        <source>Today %1</source>
        <translation>Heute %1</translation>
    </message>
    <message>
        <source>No data yet</source>
        <translation>Noch keine Daten</translation>
    </message>
    <message>
        <source>Install in Settings</source>
        <translation>Hooks installieren</translation>
    </message>
    <message>
        <source>WEEK</source>
        <translation>WO</translation>
    </message>
    <message>
        <source>No plan limits</source>
        <translation>Keine Planlimits</translation>
    </message>
    <message>
        <source>as of %1</source>
        <translation>Stand %1</translation>
    </message>
    <message>
        <source>resets %1</source>
        <translation>neu ab %1</translation>
    </message>
</context>
<context>
    <name>veslora::ClaudeWidgetPresenter</name>
    <message>
        <source>Go to %1</source>
        <translation>Zu %1</translation>
    </message>
    <message>
        <source>Agents</source>
        <translation>Agenten</translation>
    </message>
    <message>
        <source>Claude</source>
        <translation>Claude</translation>
    </message>
    <message>
        <source>No hooks · approvals off</source>
        <translation>Ohne Hooks &amp; Freigaben</translation>
    </message>
    <message>
        <source>No hooks</source>
        <translation>Ohne Hooks</translation>
    </message>
    <message numerus="yes">
        <source>%Ln working</source>
        <translation>
            <numerusform>%Ln arbeitet</numerusform>
            <numerusform>%Ln arbeiten</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>veslora::EditTrayPresenter</name>
    <message>
        <source>Automatic spacing is on</source>
        <translation>Automatischer Abstand ist an</translation>
    </message>
    <message>
        <source>Use automatic spacing</source>
        <translation>Automatischen Abstand verwenden</translation>
    </message>
    <message>
        <source>%L1 pt</source>
        <translation>%L1 pt</translation>
    </message>
    <message>
        <source>Space between widgets, %1</source>
        <translation>Abstand zwischen Widgets, %1</translation>
    </message>
</context>
<context>
    <name>veslora::EditableModulePresenter</name>
    <message>
        <source>%1U</source>
        <translation>%1E</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message numerus="yes">
        <source>%1 size %Ln unit(s)</source>
        <translation>
            <numerusform>%1: %Ln Einheit</numerusform>
            <numerusform>%1: %Ln Einheiten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Switch to %Ln unit(s)</source>
        <translation>
            <numerusform>Auf %Ln Einheit wechseln</numerusform>
            <numerusform>Auf %Ln Einheiten wechseln</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>veslora::IslandSettingsPresenter</name>
    <message>
        <source>%1 (not connected)</source>
        <translation>%1 (nicht verbunden)</translation>
    </message>
</context>
<context>
    <name>veslora::KeepAwakeWidgetPresenter</name>
    <message>
        <source>An agent is working</source>
        <translation>Ein Agent arbeitet</translation>
    </message>
    <message>
        <source>Sleeps as usual</source>
        <translation>Schläft wie sonst</translation>
    </message>
    <message>
        <source>Until %1</source>
        <translation>Bis %1</translation>
    </message>
    <message>
        <source>Until stopped</source>
        <translation>Bis zum Stopp</translation>
    </message>
    <message>
        <source>screen on</source>
        <translation>Bildschirm an</translation>
    </message>
    <message>
        <source>%1M</source>
        <translation>%1M</translation>
    </message>
    <message>
        <source>%1H</source>
        <translation>%1H</translation>
    </message>
    <message>
        <source>Stay awake until stopped</source>
        <translation>Wach bleiben bis zum Stopp</translation>
    </message>
    <message>
        <source>Stay awake for %1</source>
        <translation>%1 wach bleiben</translation>
    </message>
</context>
<context>
    <name>veslora::LoginItemManager</name>
    <message>
        <source>Couldn&apos;t write %1: %2.</source>
        <translation>%1 war nicht schreibbar: %2.</translation>
    </message>
</context>
<context>
    <name>veslora::MetersWidgetPresenter</name>
    <message>
        <source>CPU</source>
        <translation>CPU</translation>
    </message>
    <message>
        <source>MEM</source>
        <translation>RAM</translation>
    </message>
    <message>
        <source>BAT</source>
        <translation>AKK</translation>
    </message>
    <message>
        <source>DSK</source>
        <translation>DSK</translation>
    </message>
</context>
<context>
    <name>veslora::ModuleHandle</name>
    <message>
        <source>Place %1 of %2 on page %3 of %4</source>
        <translation>Platz %1 von %2 auf Seite %3 von %4</translation>
    </message>
</context>
<context>
    <name>veslora::MusicSettingsPresenter</name>
    <message>
        <source>Allowed. The music keys control Spotify.</source>
        <translation>Erlaubt. Die Musiktasten steuern Spotify.</translation>
    </message>
    <message>
        <source>Open Spotify to check.</source>
        <translation>Zum Prüfen Spotify öffnen.</translation>
    </message>
</context>
<context>
    <name>veslora::MusicWidgetPresenter</name>
    <message>
        <source>Nothing playing</source>
        <translation>Keine Wiedergabe</translation>
    </message>
</context>
<context>
    <name>veslora::TimerPickerPresenter</name>
    <message>
        <source>Time&apos;s up</source>
        <translation>Abgelaufen</translation>
    </message>
    <message>
        <source>Timer</source>
        <translation>Timer</translation>
    </message>
    <message numerus="yes">
        <source>%Ln minute(s)</source>
        <translation>
            <numerusform>%Ln Minute</numerusform>
            <numerusform>%Ln Minuten</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>veslora::UpdatePresenter</name>
    <message>
        <source>You have %1.</source>
        <translation>Installiert ist %1.</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>Suche nach Aktualisierungen&#xa0;…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Veslora is up to date.</source>
        <translation>Veslora ist aktuell.</translation>
    </message>
    <message>
        <source>The update failed.</source>
        <translation>Die Aktualisierung ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Veslora %1 is available</source>
        <translation>Veslora %1 ist verfügbar</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Downloading Veslora %1…</source>
        <translation>Veslora %1 wird geladen&#xa0;…</translation>
    </message>
    <message>
        <source>Installing Veslora %1…</source>
        <translation>Veslora %1 wird installiert&#xa0;…</translation>
    </message>
    <message>
        <source>Your system may ask for a password.</source>
        <translation>Das System fragt vielleicht nach einem Passwort.</translation>
    </message>
    <message>
        <source>Veslora %1 is installed.</source>
        <translation>Veslora %1 ist installiert.</translation>
    </message>
    <message>
        <source>It takes over once this window is closed and nothing is going on.</source>
        <translation>Sie übernimmt, sobald dieses Fenster zu ist und nichts mehr läuft.</translation>
    </message>
    <message>
        <source>Veslora %1 can be installed by hand.</source>
        <translation>Veslora %1 lässt sich von Hand installieren.</translation>
    </message>
    <message>
        <source>The server can&apos;t be reached. Is the computer online?</source>
        <translation>Der Server ist nicht erreichbar. Ist der Computer online?</translation>
    </message>
    <message>
        <source>The server took too long to answer.</source>
        <translation>Der Server hat zu lange nicht geantwortet.</translation>
    </message>
    <message>
        <source>There is no safe connection to the server.</source>
        <translation>Es gibt keine sichere Verbindung zum Server.</translation>
    </message>
    <message>
        <source>The server doesn&apos;t have what it should have.</source>
        <translation>Auf dem Server fehlt, was dort sein sollte.</translation>
    </message>
    <message>
        <source>The server sent more than it should.</source>
        <translation>Der Server hat mehr gesendet, als er sollte.</translation>
    </message>
    <message>
        <source>The server sent less than it should.</source>
        <translation>Der Server hat weniger gesendet, als er sollte.</translation>
    </message>
    <message>
        <source>What the server sent isn&apos;t signed by Veslora&apos;s makers. Nothing of it was used.</source>
        <translation>Was der Server gesendet hat, ist nicht von Veslora signiert. Nichts davon wurde verwendet.</translation>
    </message>
    <message>
        <source>This version can&apos;t read what the server sent.</source>
        <translation>Diese Version kann nicht lesen, was der Server gesendet hat.</translation>
    </message>
    <message>
        <source>There is no version for this kind of computer.</source>
        <translation>Für diese Art von Computer gibt es keine Version.</translation>
    </message>
    <message>
        <source>The download can&apos;t be saved. Is the disk full?</source>
        <translation>Der Download lässt sich nicht speichern. Ist der Datenträger voll?</translation>
    </message>
    <message>
        <source>The download was changed after it was checked. It was not installed.</source>
        <translation>Der Download wurde nach der Prüfung verändert. Er wurde nicht installiert.</translation>
    </message>
    <message>
        <source>A part of Veslora doesn&apos;t work. Installing Veslora again may help.</source>
        <translation>Ein Teil von Veslora funktioniert nicht. Vielleicht hilft es, Veslora neu zu installieren.</translation>
    </message>
    <message>
        <source>This system has no installer that Veslora can ask. In a terminal, type:</source>
        <translation>Dieses System hat kein Installationsprogramm, das Veslora fragen kann. Im Terminal:</translation>
    </message>
    <message>
        <source>The system&apos;s installer doesn&apos;t allow it. In a terminal, an administrator may type:</source>
        <translation>Das Installationsprogramm des Systems erlaubt es nicht. Mit Verwaltungsrechten im Terminal:</translation>
    </message>
    <message>
        <source>The system&apos;s installer is busy. Later, in a terminal, type:</source>
        <translation>Das Installationsprogramm des Systems ist beschäftigt. Später im Terminal:</translation>
    </message>
    <message>
        <source>The system&apos;s installer couldn&apos;t do it. In a terminal, type:</source>
        <translation>Dem Installationsprogramm des Systems ist es nicht gelungen. Im Terminal:</translation>
    </message>
    <message>
        <source>The system&apos;s installer is taking long. If nothing comes of it, in a terminal, type:</source>
        <translation>Das Installationsprogramm des Systems braucht lange. Falls nichts daraus wird, im Terminal:</translation>
    </message>
</context>
<context>
    <name>veslora::WidgetLibraryPresenter</name>
    <message>
        <source>The time and date.</source>
        <translation>Uhrzeit und Datum.</translation>
    </message>
    <message>
        <source>Countdown with a live activity beside the notch.</source>
        <translation>Countdown mit Live-Aktivität neben der Notch.</translation>
    </message>
    <message>
        <source>CPU, memory and battery at a glance.</source>
        <translation>CPU, Speicher und Akku auf einen Blick.</translation>
    </message>
    <message>
        <source>What&apos;s playing, with Spotify first.</source>
        <translation>Was gerade läuft, Spotify zuerst.</translation>
    </message>
    <message>
        <source>A step-sequencer metronome with tap tempo.</source>
        <translation>Ein Metronom als Step-Sequencer, mit Tap-Tempo.</translation>
    </message>
    <message>
        <source>Your Claude Code and Codex sessions, and when they need you.</source>
        <translation>Sitzungen von Claude Code und Codex, und wann sie warten.</translation>
    </message>
    <message>
        <source>Plan limits, context and today&apos;s tokens for Claude and Codex.</source>
        <translation>Planlimits, Kontext und heutige Tokens von Claude und Codex.</translation>
    </message>
    <message>
        <source>Stop your computer sleeping for a while, or while Claude works.</source>
        <translation>Den Computer eine Weile wach halten, oder solange Claude arbeitet.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln unit(s)</source>
        <translation>
            <numerusform>%Ln Einheit</numerusform>
            <numerusform>%Ln Einheiten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln unit(s) wide</source>
        <translation>
            <numerusform>%Ln Einheit breit</numerusform>
            <numerusform>%Ln Einheiten breit</numerusform>
        </translation>
    </message>
</context>
</TS>
