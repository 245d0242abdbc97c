#pragma once
// CLxTextBlockObjectHandlerBase: an inline object that is a piece of text (a stock or user chip),
// carried in the character format: TextFormatProperty::DisplayText holds the text and
// TextFormatProperty::ColorKey a colour key of the theme. The object is as wide as the text's
// advance and as high as its bounding rectangle in the format's font; the text is drawn centred in
// the widget library's font token 6 and the key's colour for the current theme.

#include <LxUIKit/LxTextObjectHandler/LxTextObjectHandlerBase.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QTextFormat>

class QTextCursor;

enum class TextFormatProperty : int {
    DisplayText = QTextFormat::UserProperty + 3,
    ColorKey = QTextFormat::UserProperty + 4,
};

class LXUIKIT_EXPORT CLxTextBlockObjectHandlerBase : public CLxTextObjectHandlerBase {
    Q_OBJECT
public:
    explicit CLxTextBlockObjectHandlerBase(QObject* pParent = nullptr) : CLxTextObjectHandlerBase(pParent) {}

    // Asserts "charFormat.isValid()" and that the display text is there; (-1, -1) otherwise.
    QSizeF intrinsicSize(QTextDocument* doc, int posInDocument, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* doc, int posInDocument,
                    const QTextFormat& format) override;

    // Inserts one such object at the cursor: an object-replacement character whose format has the
    // object type, the text and the colour key (on top of the cursor's current format).
    static void InsertTextBlock(QTextCursor& cursor, int i32ObjectType, const QString& strDisplayText,
                                const QString& strColorKey);
};
