#include <LxUIKit/LxTextObjectHandler/LxTextObjectHandlerBase.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

QSizeF CLxTextObjectHandlerBase::intrinsicSize(QTextDocument*, int, const QTextFormat&) { return QSizeF(); }

void CLxTextObjectHandlerBase::drawObject(QPainter*, const QRectF&, QTextDocument*, int, const QTextFormat&) {}

QTextEdit* CLxTextObjectHandlerBase::GetTextEdit(QTextDocument* doc) const {
    LXUIKIT_ASSERT_RETURN(doc != nullptr, nullptr);
    // A document given to QTextEdit::setDocument has the edit as parent; one the edit made itself
    // belongs to the edit's text control, whose parent is the edit.
    for (QObject* p = doc->parent(); p; p = p->parent())
        if (auto* edit = qobject_cast<QTextEdit*>(p))
            return edit;
        else if (p->isWidgetType())
            break;
    return nullptr;
}

bool CLxTextObjectHandlerBase::IsSelected(QTextDocument* doc, int pos) const {
    LXUIKIT_ASSERT_RETURN(doc != nullptr, false);
    QTextEdit* pTextEdit = GetTextEdit(doc);
    LXUIKIT_ASSERT_RETURN(pTextEdit != nullptr, false);
    const QTextCursor cursor = pTextEdit->textCursor();
    return pos >= cursor.selectionStart() && pos < cursor.selectionEnd();
}
