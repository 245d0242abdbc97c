#pragma once
// CLxRichTextDocument: the document of a rich-text label. Pictures named in its text (emoji,
// emoticons, inline images: local files and ":/" resources) come from one process-wide cache of
// decoded pixmaps, keyed by the file and its size, modification and change times.
//
// Qt's own document reads such a file into bytes and keeps the bytes; its image handler then
// decodes them again on every paint of the picture, in every label (each label has two
// documents). A feed of a thousand labels showing the same few emoji decoded them thousands of
// times. Now each picture is decoded once, shared by every document that shows it, and a changed
// file is read again. Other resources go to QTextDocument as before. GUI thread only.

#include <QTextDocument>

class CLxRichTextDocument final : public QTextDocument {
    Q_OBJECT
public:
    using QTextDocument::QTextDocument;

    // The shared pixmap of a local file or ":/" resource; null when it cannot be read.
    static QPixmap SharedPicture(const QString& path);

protected:
    QVariant loadResource(int type, const QUrl& name) override;
};
