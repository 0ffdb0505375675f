<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>zenvor</name>
    <message>
        <source>zenvor_report_bug</source>
        <translation>Fehler melden</translation>
    </message>
    <message>
        <source>zenvor_report_bug_subtitle</source>
        <translation>Etwas in der App ist kaputt oder verhält sich nicht wie erwartet</translation>
    </message>
    <message>
        <source>zenvor_suggest_improvement</source>
        <translation>Verbesserung vorschlagen</translation>
    </message>
    <message>
        <source>zenvor_suggest_improvement_subtitle</source>
        <translation>Neue Ideen oder gewünschte Erweiterungen für diese App</translation>
    </message>
    <message>
        <source>zenvor_need_help</source>
        <translation>Hilfe gefällig?</translation>
    </message>
    <message>
        <source>zenvor_sdk_version_format</source>
        <translation>Zenvor v%@</translation>
    </message>
    <message>
        <source>zenvor_sdk_version_unknown</source>
        <translation>Zenvor v?</translation>
    </message>
    <message>
        <source>zenvor_cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>zenvor_title_bug</source>
        <translation>Fehler melden</translation>
    </message>
    <message>
        <source>zenvor_title_improvement</source>
        <translation>Verbesserung vorschlagen</translation>
    </message>
    <message>
        <source>zenvor_email_section_title</source>
        <translation>E-Mail</translation>
    </message>
    <message>
        <source>zenvor_email_hint</source>
        <translation>you@example.com</translation>
    </message>
    <message>
        <source>zenvor_description_title</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>zenvor_message_hint_bug</source>
        <translation>Bitte so genau wie möglich. Was haben Sie erwartet, und was ist stattdessen passiert?</translation>
    </message>
    <message>
        <source>zenvor_message_hint_improvement</source>
        <translation>Beschreiben Sie Ihre Idee und warum sie helfen würde.</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_label</source>
        <translation>Wie oft passiert das?</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_first_time</source>
        <translation>Zum ersten Mal</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_few_times</source>
        <translation>Ein paarmal (2-3)</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_several_times</source>
        <translation>Mehrmals (4-10)</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_many_times</source>
        <translation>Oft (über 10)</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_almost_every_time</source>
        <translation>Fast jedes Mal</translation>
    </message>
    <message>
        <source>zenvor_add_media</source>
        <translation>Medien hinzufügen</translation>
    </message>
    <message>
        <source>zenvor_add_media_with_count</source>
        <translation>Medien hinzufügen (%d/%d)</translation>
    </message>
    <message>
        <source>zenvor_screenshot_helper</source>
        <translation>Sie können den Screenshot bearbeiten und Fotos oder Videos aus der Galerie hinzufügen.</translation>
    </message>
    <message>
        <source>zenvor_media_extra_selected_with_total</source>
        <translation>Weitere Medien: %d (%d/%d).</translation>
    </message>
    <message>
        <source>zenvor_attachment_limit_title</source>
        <translation>Zu viele Anhänge</translation>
    </message>
    <message>
        <source>zenvor_attachment_limit_message</source>
        <translation>Einem Bericht können Sie bis zu %d Dateien anhängen.</translation>
    </message>
    <message>
        <source>zenvor_unsupported_file_title</source>
        <translation>Nicht unterstützte Datei</translation>
    </message>
    <message>
        <source>zenvor_unsupported_file_message</source>
        <translation>Bitte wählen Sie Bild- oder Videodateien.</translation>
    </message>
    <message>
        <source>zenvor_preview_error_title</source>
        <translation>Fehler bei der Vorschau</translation>
    </message>
    <message>
        <source>zenvor_preview_error_message</source>
        <translation>Das gewählte Video kann nicht gezeigt werden.</translation>
    </message>
    <message>
        <source>zenvor_contact_checkbox</source>
        <translation>Darf sich der Support deswegen bei Ihnen melden?</translation>
    </message>
    <message>
        <source>zenvor_allow_support_contact_a11y</source>
        <translation>Kontakt durch den Support erlauben</translation>
    </message>
    <message>
        <source>zenvor_done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>zenvor_missing_field_title</source>
        <translation>Angabe fehlt</translation>
    </message>
    <message>
        <source>zenvor_missing_description</source>
        <translation>Eine Beschreibung ist erforderlich.</translation>
    </message>
    <message>
        <source>zenvor_failed_to_send</source>
        <translation>Nicht gesendet</translation>
    </message>
    <message>
        <source>zenvor_token_configuration_title</source>
        <translation>Zenvor-Token-Fehler</translation>
    </message>
    <message>
        <source>zenvor_token_configuration_message</source>
        <translation>Feedback ist nicht verfügbar. Bitte prüfen Sie das SDK-Token im Zenvor-Dashboard.</translation>
    </message>
    <message>
        <source>zenvor_success_title</source>
        <translation>Vielen Dank</translation>
    </message>
    <message>
        <source>zenvor_success_message</source>
        <translation>Ihr Bericht ist angekommen.</translation>
    </message>
    <message>
        <source>zenvor_ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>zenvor_timeout_error_message</source>
        <translation>Zeitüberschreitung. Bitte versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>zenvor_network_error_message</source>
        <translation>Netzwerkfehler. Bitte prüfen Sie Ihre Verbindung und versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>zenvor_limit_reached_message</source>
        <translation>Das Limit Ihres Tarifs ist erreicht. Öffnen Sie im Zenvor-Dashboard die Seite für Abrechnung, um aufzustocken und fortzufahren.</translation>
    </message>
    <message>
        <source>zenvor_send_error_default</source>
        <translation>Der Bericht konnte nicht gesendet werden. Bitte versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>zenvor_clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>zenvor_save</source>
        <translation>Sichern</translation>
    </message>
    <message>
        <source>zenvor_close_a11y</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>zenvor_send_a11y</source>
        <translation>Senden</translation>
    </message>
    <message>
        <source>zenvor_clear_text_a11y</source>
        <translation>Text löschen</translation>
    </message>
    <message>
        <source>zenvor_screenshot_a11y</source>
        <translation>Screenshot</translation>
    </message>
    <message>
        <source>zenvor_remove_screenshot_a11y</source>
        <translation>Screenshot entfernen</translation>
    </message>
    <message>
        <source>zenvor_edit_screenshot_a11y</source>
        <translation>Screenshot bearbeiten</translation>
    </message>
    <message>
        <source>zenvor_picture_a11y</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>zenvor_video_a11y</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>zenvor_remove_attachment_a11y</source>
        <translation>Anhang entfernen</translation>
    </message>
    <message>
        <source>zenvor_edit_picture_a11y</source>
        <translation>Bild bearbeiten</translation>
    </message>
    <message>
        <source>zenvor_play_video_a11y</source>
        <translation>Video abspielen</translation>
    </message>
    <message>
        <source>zenvor_sending_a11y</source>
        <translation>Wird gesendet</translation>
    </message>
    <message>
        <source>zenvor_pictures</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>zenvor_movies</source>
        <translation>Videos</translation>
    </message>
    <message>
        <source>zenvor_home</source>
        <translation>Eigene Dateien</translation>
    </message>
    <message>
        <source>zenvor_folder_up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>zenvor_other_files</source>
        <translation>Andere Dateien …</translation>
    </message>
    <message>
        <source>zenvor_all_files</source>
        <translation>Alle Dateien</translation>
    </message>
    <message>
        <source>zenvor_folder_empty</source>
        <translation>Hier sind keine Bilder oder Videos.</translation>
    </message>
    <message>
        <source>zenvor_folder_unreadable</source>
        <translation>Dieser Ordner kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>zenvor_picker_a11y</source>
        <translation>Fotos und Videos</translation>
    </message>
    <message>
        <source>zenvor_play_a11y</source>
        <translation>Wiedergeben</translation>
    </message>
    <message>
        <source>zenvor_pause_a11y</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>zenvor_position_a11y</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>zenvor_drawing_a11y</source>
        <translation>Zeichnung</translation>
    </message>
    <message>
        <source>zenvor_tools_a11y</source>
        <translation>Zeichenwerkzeuge</translation>
    </message>
    <message>
        <source>zenvor_pen_a11y</source>
        <translation>Stift</translation>
    </message>
    <message>
        <source>zenvor_marker_a11y</source>
        <translation>Textmarker</translation>
    </message>
    <message>
        <source>zenvor_eraser_a11y</source>
        <translation>Radierer</translation>
    </message>
    <message>
        <source>zenvor_undo_a11y</source>
        <translation>Widerrufen</translation>
    </message>
    <message>
        <source>zenvor_redo_a11y</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>zenvor_thin_line_a11y</source>
        <translation>Dünne Linie</translation>
    </message>
    <message>
        <source>zenvor_medium_line_a11y</source>
        <translation>Mittlere Linie</translation>
    </message>
    <message>
        <source>zenvor_thick_line_a11y</source>
        <translation>Dicke Linie</translation>
    </message>
    <message>
        <source>zenvor_hide_tools_a11y</source>
        <translation>Werkzeuge ausblenden</translation>
    </message>
    <message>
        <source>zenvor_show_tools_a11y</source>
        <translation>Werkzeuge einblenden</translation>
    </message>
    <message>
        <source>zenvor_black_a11y</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>zenvor_white_a11y</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>zenvor_red_a11y</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>zenvor_orange_a11y</source>
        <translation>Orange</translation>
    </message>
    <message>
        <source>zenvor_yellow_a11y</source>
        <translation>Gelb</translation>
    </message>
    <message>
        <source>zenvor_green_a11y</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>zenvor_blue_a11y</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>zenvor_purple_a11y</source>
        <translation>Lila</translation>
    </message>
</context>
</TS>
