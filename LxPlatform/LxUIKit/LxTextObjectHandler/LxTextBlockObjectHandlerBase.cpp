#include <LxUIKit/LxTextObjectHandler/LxTextBlockObjectHandlerBase.h>

#include <LxStdUI/FontToken.h>
#include <LxStdUI/LWidgetUtil.h>
#include <LxStdUI/ResProvider.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QPainter>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>

QSizeF CLxTextBlockObjectHandlerBase::intrinsicSize(QTextDocument* doc, int, const QTextFormat& format) {
    const QTextCharFormat charFormat = format.toCharFormat();
    if (!LXUIKIT_ASSERT(charFormat.isValid()))
        return QSizeF(-1, -1);
    if (!LXUIKIT_ASSERT(charFormat.hasProperty(static_cast<int>(TextFormatProperty::DisplayText))))
        return QSizeF(-1, -1);
    const QString text = charFormat.stringProperty(static_cast<int>(TextFormatProperty::DisplayText));
    QFont font = charFormat.font();
    if (doc)
        font = font.resolve(doc->defaultFont());
    return lx_std_ui::LWidgetUtil::measureText(font, text);
}

void CLxTextBlockObjectHandlerBase::drawObject(QPainter* painter, const QRectF& rect, QTextDocument*, int,
                                               const QTextFormat& format) {
    if (!painter)
        return;
    const QTextCharFormat charFormat = format.toCharFormat();
    painter->save();
    painter->setFont(LFontTokenLoader::font(6));
    std::shared_ptr<const QColor> spColor;
    lx_ui_res::Provider::instance()->get(spColor,
                                         charFormat.stringProperty(static_cast<int>(TextFormatProperty::ColorKey)));
    if (spColor)
        painter->setPen(*spColor);
    painter->drawText(rect, Qt::AlignCenter,
                      charFormat.stringProperty(static_cast<int>(TextFormatProperty::DisplayText)));
    painter->restore();
}

void CLxTextBlockObjectHandlerBase::InsertTextBlock(QTextCursor& cursor, int i32ObjectType,
                                                    const QString& strDisplayText, const QString& strColorKey) {
    QTextCharFormat f = cursor.charFormat();
    f.setObjectType(i32ObjectType);
    f.setProperty(static_cast<int>(TextFormatProperty::DisplayText), strDisplayText);
    f.setProperty(static_cast<int>(TextFormatProperty::ColorKey), strColorKey);
    cursor.insertText(QString(QChar::ObjectReplacementCharacter), f);
}
