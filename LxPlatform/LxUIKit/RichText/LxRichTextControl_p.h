#pragma once
// CLxRichTextControl: the text control behind CLxRichText (Qt's widget text control, which owns
// the document and handles selection, keyboard and the context menu). It changes what is copied:
// the text as the user reads it, with line breaks as new lines, no zero-width spaces, and pictures
// and emoticons as the text of their snippets. Not installed: it derives from a Qt private class.

#include <QtWidgets/private/qwidgettextcontrol_p.h>

#include <functional>

class CLxRichTextControl final : public QWidgetTextControl {
public:
    // The plain text of the snippet an anchor href names (empty when none).
    using TextForHref = std::function<QString(const QString&)>;

    CLxRichTextControl(QTextDocument* pDoc, QObject* pParent, TextForHref fnText);

    QMimeData* createMimeDataFromSelection() const override;

private:
    TextForHref m_fnText;
};
