<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar">
<context>
    <name>zenvor</name>
    <message>
        <source>zenvor_report_bug</source>
        <translation>الإبلاغ عن خلل</translation>
    </message>
    <message>
        <source>zenvor_report_bug_subtitle</source>
        <translation>شيء في التطبيق معطّل أو لا يعمل كما هو متوقع</translation>
    </message>
    <message>
        <source>zenvor_suggest_improvement</source>
        <translation>اقتراح تحسين</translation>
    </message>
    <message>
        <source>zenvor_suggest_improvement_subtitle</source>
        <translation>أفكار جديدة أو تحسينات مرغوبة لهذا التطبيق</translation>
    </message>
    <message>
        <source>zenvor_need_help</source>
        <translation>تحتاج مساعدة؟</translation>
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
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>zenvor_title_bug</source>
        <translation>الإبلاغ عن خلل</translation>
    </message>
    <message>
        <source>zenvor_title_improvement</source>
        <translation>اقتراح تحسين</translation>
    </message>
    <message>
        <source>zenvor_email_section_title</source>
        <translation>البريد الإلكتروني</translation>
    </message>
    <message>
        <source>zenvor_email_hint</source>
        <translation>you@example.com</translation>
    </message>
    <message>
        <source>zenvor_description_title</source>
        <translation>الوصف</translation>
    </message>
    <message>
        <source>zenvor_message_hint_bug</source>
        <translation>يُرجى ذكر أكبر قدر ممكن من التفاصيل. ماذا كنت تتوقع، وماذا حدث بدلاً من ذلك؟</translation>
    </message>
    <message>
        <source>zenvor_message_hint_improvement</source>
        <translation>شاركنا فكرتك ولماذا ستكون مفيدة.</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_label</source>
        <translation>كم مرة يحدث هذا؟</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_first_time</source>
        <translation>أول مرة</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_few_times</source>
        <translation>بضع مرات (2-3)</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_several_times</source>
        <translation>عدة مرات (4-10)</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_many_times</source>
        <translation>مرات كثيرة (أكثر من 10)</translation>
    </message>
    <message>
        <source>zenvor_occurrence_frequency_almost_every_time</source>
        <translation>في كل مرة تقريبًا</translation>
    </message>
    <message>
        <source>zenvor_add_media</source>
        <translation>إضافة وسائط</translation>
    </message>
    <message>
        <source>zenvor_add_media_with_count</source>
        <translation>إضافة وسائط (%d/%d)</translation>
    </message>
    <message>
        <source>zenvor_screenshot_helper</source>
        <translation>يمكنك تعديل لقطة الشاشة وإضافة صور أو مقاطع فيديو من المعرض.</translation>
    </message>
    <message>
        <source>zenvor_media_extra_selected_with_total</source>
        <translation>الوسائط الإضافية المحددة: %d (%d/%d).</translation>
    </message>
    <message>
        <source>zenvor_attachment_limit_title</source>
        <translation>حد المرفقات</translation>
    </message>
    <message>
        <source>zenvor_attachment_limit_message</source>
        <translation>يمكنك إرفاق ما يصل إلى %d ملفات بكل بلاغ.</translation>
    </message>
    <message>
        <source>zenvor_unsupported_file_title</source>
        <translation>ملف غير مدعوم</translation>
    </message>
    <message>
        <source>zenvor_unsupported_file_message</source>
        <translation>يُرجى اختيار ملفات صور أو فيديو.</translation>
    </message>
    <message>
        <source>zenvor_preview_error_title</source>
        <translation>خطأ في المعاينة</translation>
    </message>
    <message>
        <source>zenvor_preview_error_message</source>
        <translation>تعذّرت معاينة الفيديو المحدد.</translation>
    </message>
    <message>
        <source>zenvor_contact_checkbox</source>
        <translation>هل تريد أن يتواصل معك فريق الدعم بشأن هذه المشكلة؟</translation>
    </message>
    <message>
        <source>zenvor_allow_support_contact_a11y</source>
        <translation>السماح لفريق الدعم بالتواصل</translation>
    </message>
    <message>
        <source>zenvor_done</source>
        <translation>تم</translation>
    </message>
    <message>
        <source>zenvor_missing_field_title</source>
        <translation>حقل ناقص</translation>
    </message>
    <message>
        <source>zenvor_missing_description</source>
        <translation>الوصف مطلوب.</translation>
    </message>
    <message>
        <source>zenvor_failed_to_send</source>
        <translation>تعذّر الإرسال</translation>
    </message>
    <message>
        <source>zenvor_token_configuration_title</source>
        <translation>خطأ في رمز Zenvor</translation>
    </message>
    <message>
        <source>zenvor_token_configuration_message</source>
        <translation>الملاحظات غير متاحة. يُرجى التحقق من إعداد رمز SDK في لوحة تحكم Zenvor.</translation>
    </message>
    <message>
        <source>zenvor_success_title</source>
        <translation>شكرًا لك</translation>
    </message>
    <message>
        <source>zenvor_success_message</source>
        <translation>تم استلام بلاغك.</translation>
    </message>
    <message>
        <source>zenvor_ok</source>
        <translation>حسنًا</translation>
    </message>
    <message>
        <source>zenvor_timeout_error_message</source>
        <translation>انتهت مهلة الطلب. يُرجى المحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>zenvor_network_error_message</source>
        <translation>خطأ في الشبكة. يُرجى التحقق من اتصالك والمحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>zenvor_limit_reached_message</source>
        <translation>تم بلوغ حد الخطة. افتح صفحة الفوترة في لوحة تحكم Zenvor للترقية والمتابعة.</translation>
    </message>
    <message>
        <source>zenvor_send_error_default</source>
        <translation>تعذّر إرسال البلاغ. يُرجى المحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>zenvor_clear</source>
        <translation>مسح</translation>
    </message>
    <message>
        <source>zenvor_save</source>
        <translation>حفظ</translation>
    </message>
    <message>
        <source>zenvor_close_a11y</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>zenvor_send_a11y</source>
        <translation>إرسال</translation>
    </message>
    <message>
        <source>zenvor_clear_text_a11y</source>
        <translation>مسح النص</translation>
    </message>
    <message>
        <source>zenvor_screenshot_a11y</source>
        <translation>لقطة الشاشة</translation>
    </message>
    <message>
        <source>zenvor_remove_screenshot_a11y</source>
        <translation>إزالة لقطة الشاشة</translation>
    </message>
    <message>
        <source>zenvor_edit_screenshot_a11y</source>
        <translation>تعديل لقطة الشاشة</translation>
    </message>
    <message>
        <source>zenvor_picture_a11y</source>
        <translation>صورة</translation>
    </message>
    <message>
        <source>zenvor_video_a11y</source>
        <translation>فيديو</translation>
    </message>
    <message>
        <source>zenvor_remove_attachment_a11y</source>
        <translation>إزالة المرفق</translation>
    </message>
    <message>
        <source>zenvor_edit_picture_a11y</source>
        <translation>تعديل الصورة</translation>
    </message>
    <message>
        <source>zenvor_play_video_a11y</source>
        <translation>تشغيل الفيديو</translation>
    </message>
    <message>
        <source>zenvor_sending_a11y</source>
        <translation>جارٍ الإرسال</translation>
    </message>
    <message>
        <source>zenvor_pictures</source>
        <translation>الصور</translation>
    </message>
    <message>
        <source>zenvor_movies</source>
        <translation>الفيديوهات</translation>
    </message>
    <message>
        <source>zenvor_home</source>
        <translation>المجلد الرئيسي</translation>
    </message>
    <message>
        <source>zenvor_folder_up</source>
        <translation>للأعلى</translation>
    </message>
    <message>
        <source>zenvor_other_files</source>
        <translation>ملفات أخرى…</translation>
    </message>
    <message>
        <source>zenvor_all_files</source>
        <translation>كل الملفات</translation>
    </message>
    <message>
        <source>zenvor_folder_empty</source>
        <translation>لا توجد صور أو فيديوهات هنا.</translation>
    </message>
    <message>
        <source>zenvor_folder_unreadable</source>
        <translation>لا يمكن فتح هذا المجلد.</translation>
    </message>
    <message>
        <source>zenvor_picker_a11y</source>
        <translation>الصور والفيديوهات</translation>
    </message>
    <message>
        <source>zenvor_play_a11y</source>
        <translation>تشغيل</translation>
    </message>
    <message>
        <source>zenvor_pause_a11y</source>
        <translation>إيقاف مؤقت</translation>
    </message>
    <message>
        <source>zenvor_position_a11y</source>
        <translation>الموضع</translation>
    </message>
    <message>
        <source>zenvor_drawing_a11y</source>
        <translation>الرسم</translation>
    </message>
    <message>
        <source>zenvor_tools_a11y</source>
        <translation>أدوات الرسم</translation>
    </message>
    <message>
        <source>zenvor_pen_a11y</source>
        <translation>قلم</translation>
    </message>
    <message>
        <source>zenvor_marker_a11y</source>
        <translation>قلم تمييز</translation>
    </message>
    <message>
        <source>zenvor_eraser_a11y</source>
        <translation>ممحاة</translation>
    </message>
    <message>
        <source>zenvor_undo_a11y</source>
        <translation>تراجع</translation>
    </message>
    <message>
        <source>zenvor_redo_a11y</source>
        <translation>إعادة</translation>
    </message>
    <message>
        <source>zenvor_thin_line_a11y</source>
        <translation>خط رفيع</translation>
    </message>
    <message>
        <source>zenvor_medium_line_a11y</source>
        <translation>خط متوسط</translation>
    </message>
    <message>
        <source>zenvor_thick_line_a11y</source>
        <translation>خط سميك</translation>
    </message>
    <message>
        <source>zenvor_hide_tools_a11y</source>
        <translation>إخفاء الأدوات</translation>
    </message>
    <message>
        <source>zenvor_show_tools_a11y</source>
        <translation>إظهار الأدوات</translation>
    </message>
    <message>
        <source>zenvor_black_a11y</source>
        <translation>أسود</translation>
    </message>
    <message>
        <source>zenvor_white_a11y</source>
        <translation>أبيض</translation>
    </message>
    <message>
        <source>zenvor_red_a11y</source>
        <translation>أحمر</translation>
    </message>
    <message>
        <source>zenvor_orange_a11y</source>
        <translation>برتقالي</translation>
    </message>
    <message>
        <source>zenvor_yellow_a11y</source>
        <translation>أصفر</translation>
    </message>
    <message>
        <source>zenvor_green_a11y</source>
        <translation>أخضر</translation>
    </message>
    <message>
        <source>zenvor_blue_a11y</source>
        <translation>أزرق</translation>
    </message>
    <message>
        <source>zenvor_purple_a11y</source>
        <translation>أرجواني</translation>
    </message>
</context>
</TS>
