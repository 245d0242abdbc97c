#include <LxUIKit/RichText/LxRichTextControl_p.h>

#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextFragment>

CLxRichTextControl::CLxRichTextControl(QTextDocument* pDoc, QObject* pParent, TextForHref fnText)
    : QWidgetTextControl(pDoc, pParent), m_fnText(std::move(fnText)) {}

QMimeData* CLxRichTextControl::createMimeDataFromSelection() const {
    const QTextCursor cursor = textCursor();
    if (!cursor.hasSelection())
        return QWidgetTextControl::createMimeDataFromSelection();
    // Qt's own mime data fills its text lazily from the fragment; ours is filled here.
    auto* pData = new QMimeData;
    pData->setHtml(QTextDocumentFragment(cursor).toHtml());
    const int start = cursor.selectionStart(), end = cursor.selectionEnd();
    QString text;
    QString lastObjectHref;
    for (QTextBlock b = document()->findBlock(start); b.isValid() && b.position() < end; b = b.next()) {
        if (b.position() > start)
            text += QLatin1Char('\n');
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextFragment f = it.fragment();
            const int fs = qMax(start, f.position()), fe = qMin(end, f.position() + f.length());
            if (fs >= fe)
                continue;
            const QTextCharFormat fmt = f.charFormat();
            if (fmt.isImageFormat() || fmt.objectType() != QTextFormat::NoObject) {
                // One object per snippet, even when a picture spans several characters.
                if (fmt.anchorHref() != lastObjectHref || fmt.anchorHref().isEmpty())
                    text += m_fnText(fmt.anchorHref()).repeated(fmt.anchorHref().isEmpty() ? fe - fs : 1);
                lastObjectHref = fmt.anchorHref();
                continue;
            }
            lastObjectHref.clear();
            QString part = f.text().mid(fs - f.position(), fe - fs);
            part.remove(QChar(0x200B));
            part.replace(QChar::LineSeparator, QLatin1Char('\n'));
            part.replace(QChar::Nbsp, QLatin1Char(' '));
            text += part;
        }
    }
    pData->setText(text);
    return pData;
}
