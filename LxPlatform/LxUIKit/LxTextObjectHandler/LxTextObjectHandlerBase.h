#pragma once
// Inline objects of a QTextDocument (emoticons, SVG icons, stock and user chips) are drawn by
// handlers registered with the document layout for custom object types:
//
//   doc->documentLayout()->registerHandler(QTextFormat::UserObject + n, new CLxSvgObjectHandler(doc));
//
// and a character format with that object type on an object-replacement character
// (QChar::ObjectReplacementCharacter) in the text. CLxTextObjectHandlerBase is the common base: it
// takes no room and draws nothing, and offers its subclasses the text edit that shows a document
// and whether a position is selected there.

#include <LxUIKit/LxUIKitExport.h>
#include <QObject>
#include <QTextObjectInterface>

class QTextEdit;

class LXUIKIT_EXPORT CLxTextObjectHandlerBase : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
public:
    explicit CLxTextObjectHandlerBase(QObject* pParent = nullptr) : QObject(pParent) {}

    QSizeF intrinsicSize(QTextDocument* doc, int posInDocument, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* doc, int posInDocument,
                    const QTextFormat& format) override;

protected:
    // The QTextEdit that shows the document (its parent, or its text control's parent), or null. Asserts "doc !=
    // nullptr".
    QTextEdit* GetTextEdit(QTextDocument* doc) const;
    // Whether pos lies in the owning text edit's selection, start inclusive, end exclusive.
    // Asserts "doc != nullptr" and "pTextEdit != nullptr".
    bool IsSelected(QTextDocument* doc, int pos) const;
};
