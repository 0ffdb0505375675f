<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- What a translation starts from. A table keeps the placeholders %d and %@ of a text, in their order. -->
<TS version="2.1" language="en">
<context>
    <name>zenvor</name>
    <message>
        <source>zenvor_report_bug</source>
        <translation>Report a bug</translation>
    </message>
    <message>
        <source>zenvor_report_bug_subtitle</source>
        <translation>Something in the app is broken or does not work as expected</translation>
    </message>
    <message>
        <source>zenvor_suggest_improvement</source>
        <translation>Suggest an improvement</translation>
    </message>
    <message>
        <source>zenvor_suggest_improvement_subtitle</source>
        <translation>New ideas or desired enhancements for this app</translation>
    </message>
    <message>
        <source>zenvor_need_help</source>
        <translation>Need help?</translation>
    </message>
    <message>
        <source>zenvor_sdk_version_format</source>
        <extracomment>%@: the version</extracomment>
        <translation>Zenvor v%@</translation>
    </message>
    <message>
        <source>zenvor_sdk_version_unknown</source>
        <translation>Zenvor v?</translation>
    </message>
    <message>
        <source>zenvor_cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>zenvor_title_bug</source>
        <translation>Report a bug</translation>
    </message>
    <message>
        <source>zenvor_title_improvement</source>
        <translation>Suggest an improvement</translation>
    </message>
    <message>
        <source>zenvor_email_section_title</source>
        <translation>Email</translation>
    </message>
    <message>
        <source>zenvor_email_hint</source>
        <translation>you@example.com</translation>
    </message>
    <message>
        <source>zenvor_description_title</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>zenvor_message_hint_bug</source>
        <translation>Please be as detailed as possible. What did you expect and what happened instead?</translation>
    </message>
    <message>
        <source>zenvor_message_hint_improvement</source>
        <translation>Share your idea and why it would help.</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_label</source>
        <translation>How often does this happen?</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_first_time</source>
        <translation>First time</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_few_times</source>
        <translation>A few times (2-3)</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_several_times</source>
        <translation>Several times (4-10)</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_many_times</source>
        <translation>Many times (10+)</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_almost_every_time</source>
        <translation>Almost every time</translation>
    </message>
    <message>
        <source>zenvor_add_media</source>
        <translation>Add Media</translation>
    </message>
    <message>
        <source>zenvor_add_media_with_count</source>
        <extracomment>%d: how many, of how many</extracomment>
        <translation>Add Media (%d/%d)</translation>
    </message>
    <message>
        <source>zenvor_screenshot_helper</source>
        <translation>You can edit the screenshot and add photos/videos from gallery.</translation>
    </message>
    <message>
        <source>zenvor_media_extra_selected_with_total</source>
        <extracomment>%d: how many beside the screenshot, how many in all, of how many</extracomment>
        <translation>Selected extra media: %d (%d/%d).</translation>
    </message>
    <message>
        <source>zenvor_attachment_limit_title</source>
        <translation>Attachment Limit</translation>
    </message>
    <message>
        <source>zenvor_attachment_limit_message</source>
        <extracomment>%d: how many</extracomment>
        <translation>You can attach up to %d files per report.</translation>
    </message>
    <message>
        <source>zenvor_unsupported_file_title</source>
        <translation>Unsupported File</translation>
    </message>
    <message>
        <source>zenvor_unsupported_file_message</source>
        <translation>Please select image or video files.</translation>
    </message>
    <message>
        <source>zenvor_preview_error_title</source>
        <translation>Preview Error</translation>
    </message>
    <message>
        <source>zenvor_preview_error_message</source>
        <translation>Could not preview selected video.</translation>
    </message>
    <message>
        <source>zenvor_contact_checkbox</source>
        <translation>Do you want support to contact you about this issue?</translation>
    </message>
    <message>
        <source>zenvor_allow_support_contact_a11y</source>
        <translation>Allow support contact</translation>
    </message>
    <message>
        <source>zenvor_done</source>
        <translation>Done</translation>
    </message>
    <message>
        <source>zenvor_missing_field_title</source>
        <translation>Missing Field</translation>
    </message>
    <message>
        <source>zenvor_missing_description</source>
        <translation>Description is required.</translation>
    </message>
    <message>
        <source>zenvor_failed_to_send</source>
        <translation>Failed to Send</translation>
    </message>
    <message>
        <source>zenvor_token_configuration_title</source>
        <translation>Zenvor Token Error</translation>
    </message>
    <message>
        <source>zenvor_token_configuration_message</source>
        <translation>Feedback is unavailable. Please check SDK token configuration in Zenvor dashboard.</translation>
    </message>
    <message>
        <source>zenvor_success_title</source>
        <translation>Thank You</translation>
    </message>
    <message>
        <source>zenvor_success_message</source>
        <translation>Your report has been received.</translation>
    </message>
    <message>
        <source>zenvor_ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>zenvor_timeout_error_message</source>
        <translation>Request timed out. Please try again.</translation>
    </message>
    <message>
        <source>zenvor_network_error_message</source>
        <translation>Network error. Please check your connection and try again.</translation>
    </message>
    <message>
        <source>zenvor_limit_reached_message</source>
        <translation>Plan limit reached. Open the Zenvor dashboard Billing page to upgrade and continue.</translation>
    </message>
    <message>
        <source>zenvor_send_error_default</source>
        <translation>Could not send report. Please try again.</translation>
    </message>
    <message>
        <source>zenvor_clear</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>zenvor_save</source>
        <translation>Save</translation>
    </message>
</context>
<!-- What assistive tools read where there is nothing but a drawing, and the picker of media. -->
<context>
    <name>zenvor</name>
    <message>
        <source>zenvor_close_a11y</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>zenvor_send_a11y</source>
        <translation>Send</translation>
    </message>
    <message>
        <source>zenvor_clear_text_a11y</source>
        <translation>Clear text</translation>
    </message>
    <message>
        <source>zenvor_screenshot_a11y</source>
        <translation>Screenshot</translation>
    </message>
    <message>
        <source>zenvor_remove_screenshot_a11y</source>
        <translation>Remove screenshot</translation>
    </message>
    <message>
        <source>zenvor_edit_screenshot_a11y</source>
        <translation>Edit screenshot</translation>
    </message>
    <message>
        <source>zenvor_picture_a11y</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>zenvor_video_a11y</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>zenvor_remove_attachment_a11y</source>
        <translation>Remove attachment</translation>
    </message>
    <message>
        <source>zenvor_edit_picture_a11y</source>
        <translation>Edit picture</translation>
    </message>
    <message>
        <source>zenvor_play_video_a11y</source>
        <translation>Play video</translation>
    </message>
    <message>
        <source>zenvor_sending_a11y</source>
        <translation>Sending</translation>
    </message>
    <message>
        <source>zenvor_pictures</source>
        <translation>Pictures</translation>
    </message>
    <message>
        <source>zenvor_movies</source>
        <translation>Videos</translation>
    </message>
    <message>
        <source>zenvor_home</source>
        <translation>Home</translation>
    </message>
    <message>
        <source>zenvor_folder_up</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>zenvor_other_files</source>
        <translation>Other files…</translation>
    </message>
    <message>
        <source>zenvor_all_files</source>
        <translation>All files</translation>
    </message>
    <message>
        <source>zenvor_folder_empty</source>
        <translation>No pictures or videos here.</translation>
    </message>
    <message>
        <source>zenvor_folder_unreadable</source>
        <translation>This folder cannot be opened.</translation>
    </message>
    <message>
        <source>zenvor_picker_a11y</source>
        <translation>Photos and videos</translation>
    </message>
    <message>
        <source>zenvor_play_a11y</source>
        <translation>Play</translation>
    </message>
    <message>
        <source>zenvor_pause_a11y</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>zenvor_position_a11y</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>zenvor_drawing_a11y</source>
        <translation>Drawing</translation>
    </message>
    <message>
        <source>zenvor_tools_a11y</source>
        <translation>Drawing tools</translation>
    </message>
    <message>
        <source>zenvor_pen_a11y</source>
        <translation>Pen</translation>
    </message>
    <message>
        <source>zenvor_marker_a11y</source>
        <translation>Marker</translation>
    </message>
    <message>
        <source>zenvor_eraser_a11y</source>
        <translation>Eraser</translation>
    </message>
    <message>
        <source>zenvor_undo_a11y</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>zenvor_redo_a11y</source>
        <translation>Redo</translation>
    </message>
    <message>
        <source>zenvor_thin_line_a11y</source>
        <translation>Thin line</translation>
    </message>
    <message>
        <source>zenvor_medium_line_a11y</source>
        <translation>Medium line</translation>
    </message>
    <message>
        <source>zenvor_thick_line_a11y</source>
        <translation>Thick line</translation>
    </message>
    <message>
        <source>zenvor_hide_tools_a11y</source>
        <translation>Hide tools</translation>
    </message>
    <message>
        <source>zenvor_show_tools_a11y</source>
        <translation>Show tools</translation>
    </message>
    <message>
        <source>zenvor_black_a11y</source>
        <translation>Black</translation>
    </message>
    <message>
        <source>zenvor_white_a11y</source>
        <translation>White</translation>
    </message>
    <message>
        <source>zenvor_red_a11y</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>zenvor_orange_a11y</source>
        <translation>Orange</translation>
    </message>
    <message>
        <source>zenvor_yellow_a11y</source>
        <translation>Yellow</translation>
    </message>
    <message>
        <source>zenvor_green_a11y</source>
        <translation>Green</translation>
    </message>
    <message>
        <source>zenvor_blue_a11y</source>
        <translation>Blue</translation>
    </message>
    <message>
        <source>zenvor_purple_a11y</source>
        <translation>Purple</translation>
    </message>
</context>
</TS>
