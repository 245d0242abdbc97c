#include <LxUIKit/RichText/LxRichTextLayout.h>
#include <LxUIKit/RichText/LxRichTextLayout_p.h>

#include <LxStdUI/ResProvider.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QtGui/private/qabstracttextdocumentlayout_p.h>
#include <QtGui/private/qtextdocument_p.h>
#include <QtGui/private/qtextdocumentlayout_p.h>
#include <QtGui/private/qtextimagehandler_p.h>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextLayout>
#include <QTextList>
#include <QtMath>

#include <algorithm>
#include <vector>

namespace {

// Line width used when the document has no text width (nothing wraps).
constexpr qreal kUnboundedWidth = 1.0e6;
const QString kEllipsis = QStringLiteral("...");

Qt::Alignment VisualAlignment(Qt::LayoutDirection dir, Qt::Alignment align) {
    if (dir == Qt::RightToLeft && !(align & Qt::AlignAbsolute)) {
        if (align & Qt::AlignLeft)
            return (align & ~Qt::AlignLeft) | Qt::AlignRight;
        if (align & Qt::AlignRight)
            return (align & ~Qt::AlignRight) | Qt::AlignLeft;
    }
    return align;
}

// Format of the character at `offset` of the block.
QTextCharFormat FormatAt(const QTextBlock& block, int offset) {
    const int pos = block.position() + offset;
    for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment f = it.fragment();
        if (f.contains(pos))
            return f.charFormat();
    }
    return block.charFormat();
}

// Indent of a block from its own indent and, for a list item, its list's indent (as Qt does).
qreal BlockIndent(const QTextDocument* doc, const QTextBlock& block) {
    qreal indent = block.blockFormat().indent();
    if (const QTextList* list = block.textList())
        indent += list->format().indent();
    return indent * doc->indentWidth();
}

// The list marker of a list item, beside its first line, drawn as Qt's document layout draws it:
// the item's number text for numbered styles, a disc, circle or square for the others.
void DrawListMarker(QPainter* p, const QTextDocument* doc, const QTextBlock& block, const QBrush& textBrush) {
    const QTextList* list = block.textList();
    const QTextLayout* tl = block.layout();
    if (!list || tl->lineCount() == 0)
        return;
    int style = list->format().style();
    if (block.blockFormat().hasProperty(QTextFormat::ListStyle))
        style = block.blockFormat().intProperty(QTextFormat::ListStyle);
    const QFont font = QTextCursor(block).charFormat().font().resolve(doc->defaultFont());
    const QFontMetricsF fm(font);
    const QTextLine first = tl->lineAt(0);
    const Qt::LayoutDirection dir = block.textDirection();
    QPointF pos = (tl->position() + first.naturalTextRect().topLeft()).toPoint();
    if (dir == Qt::RightToLeft)
        pos.rx() += first.naturalTextRect().width();
    QString itemText;
    QSizeF size;
    switch (style) {
    case QTextListFormat::ListDecimal:
    case QTextListFormat::ListLowerAlpha:
    case QTextListFormat::ListUpperAlpha:
    case QTextListFormat::ListLowerRoman:
    case QTextListFormat::ListUpperRoman:
        itemText = list->itemText(block);
        size = QSizeF(fm.horizontalAdvance(itemText), fm.height());
        break;
    case QTextListFormat::ListSquare:
    case QTextListFormat::ListCircle:
    case QTextListFormat::ListDisc: {
        const int side = qFloor(fm.lineSpacing()) / 3;  // whole pixels, as Qt's own layout sizes it
        size = QSizeF(side, side);
        break;
    }
    default: return;
    }
    QRectF r(pos, size);
    qreal xoff = fm.horizontalAdvance(QLatin1Char(' '));
    if (dir == Qt::LeftToRight)
        xoff = -xoff - size.width();
    r.translate(xoff, fm.height() / 2 - size.height() / 2);
    p->save();
    p->setRenderHint(QPainter::Antialiasing);
    switch (style) {
    case QTextListFormat::ListSquare: p->fillRect(r, textBrush); break;
    case QTextListFormat::ListCircle:
        p->setPen(QPen(textBrush, 0));
        p->setBrush(Qt::NoBrush);
        p->drawEllipse(r.translated(0.5, 0.5));
        break;
    case QTextListFormat::ListDisc:
        p->setBrush(textBrush);
        p->setPen(Qt::NoPen);
        p->drawEllipse(r);
        break;
    default:
        p->setFont(font);
        p->setPen(QPen(textBrush, 0));
        p->drawText(r, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, itemText);
        break;
    }
    p->restore();
}

}  // namespace

// Measured once per default font: every label makes a layout, and shaping "..." costs more than
// the rest of making one.
void CLxRichTextLayoutPrivate::Init() {
    // Kept for the process (a font must not outlive the application's font system at exit).
    static QFont* s_pFont = nullptr;
    static int s_i32Width = 0;
    const QFont font;
    if (!s_pFont || !(font == *s_pFont)) {
        if (!s_pFont)
            s_pFont = new QFont;
        *s_pFont = font;
        s_i32Width = QFontMetrics(font).horizontalAdvance(kEllipsis);
    }
    i32EllipsisWidth = s_i32Width;
}

CLxRichTextLayout::CLxRichTextLayout(QTextDocument* pDoc)
    : QAbstractTextDocumentLayout(pDoc), m_pPrivate(std::make_unique<CLxRichTextLayoutPrivate>()) {
    m_pPrivate->Init();
    registerHandler(QTextFormat::ImageObject, new QTextImageHandler(this));
}

CLxRichTextLayout::~CLxRichTextLayout() = default;

// Qt's layout is made when first needed: a label with a line limit never uses it.
CQtDocumentLayout* CLxRichTextLayout::QtLayout() const {
    CLxRichTextLayoutPrivate* d = m_pPrivate.get();
    if (d->pQtLayout)
        return d->pQtLayout;
    auto* self = const_cast<CLxRichTextLayout*>(this);
    auto* pQt = new CQtDocumentLayout(document());
    pQt->setParent(self);
    d->pQtLayout = pQt;
    // Its signals are ours: the document's users listen to the installed layout.
    connect(pQt, &QAbstractTextDocumentLayout::update, self, &QAbstractTextDocumentLayout::update);
    connect(pQt, &QAbstractTextDocumentLayout::updateBlock, self, &QAbstractTextDocumentLayout::updateBlock);
    connect(pQt, &QAbstractTextDocumentLayout::documentSizeChanged, self,
            &QAbstractTextDocumentLayout::documentSizeChanged);
    connect(pQt, &QAbstractTextDocumentLayout::pageCountChanged, self, &QAbstractTextDocumentLayout::pageCountChanged);
    return pQt;
}

void CLxRichTextLayout::SetMaxLineCount(int i32MaxLineCount) { m_pPrivate->i32MaxLineCount = i32MaxLineCount; }
void CLxRichTextLayout::SetShowEllipsis(bool bShow) { m_pPrivate->bShowEllipsis = bShow; }
void CLxRichTextLayout::SetMaxHeight(unsigned int u32MaxHeight) { m_pPrivate->u32MaxHeight = u32MaxHeight; }
void CLxRichTextLayout::SetEllipsisTextColor(const QString& strColorKey) {
    m_pPrivate->strEllipsisTextColor = strColorKey;
}
int CLxRichTextLayout::GetMaxLineCount() const { return m_pPrivate->i32MaxLineCount; }
bool CLxRichTextLayout::IsShowEllipsis() const { return m_pPrivate->bShowEllipsis; }
unsigned int CLxRichTextLayout::GetMaxHeight() const { return m_pPrivate->u32MaxHeight; }
QString CLxRichTextLayout::GetEllipsisTextColor() const { return m_pPrivate->strEllipsisTextColor; }
int CLxRichTextLayout::GetEllipsisWidth() const { return m_pPrivate->i32EllipsisWidth; }

void CLxRichTextLayout::Relayout() {
    const bool bUseQt = m_pPrivate->i32MaxLineCount <= 0 && m_pPrivate->u32MaxHeight == 0;
    // Qt's layout finishes long documents in steps on a timer; those steps must not touch the
    // blocks after our engine has taken over, so it finishes now.
    if (m_pPrivate->bUseQt && !bUseQt && !m_pPrivate->bQtStale && document() &&
        !document()->docHandle()->isInEditBlock())
        QtLayout()->documentSize();
    m_pPrivate->bUseQt = bUseQt;
    m_pPrivate->bDirty = true;
    m_pPrivate->bQtStale = true;
    emit update(QRectF(0., 0., 1000000000., 1000000000.));
}

bool CLxRichTextLayout::IsQtLayoutInCharge() const { return m_pPrivate->UseQtLayout(); }

void CLxRichTextLayout::documentChanged(int from, int charsRemoved, int charsAdded) {
    CLxRichTextLayoutPrivate* d = m_pPrivate.get();
    if (d->UseQtLayout() && !d->bQtStale) {
        // Qt's layout follows changes itself, incrementally.
        d->bDirty = true;
        ++d->i32LayoutPasses;
        SyncQtLayout();
        QtLayout()->documentChanged(from, charsRemoved, charsAdded);
        return;
    }
    d->bDirty = true;
    d->bQtStale = true;
    emit update(QRectF(0., 0., 1000000000., 1000000000.));
}

// Qt's layout looks inline-object handlers up in its own table; it gets ours, which is where
// they are registered.
void CLxRichTextLayout::SyncQtLayout() const {
    CQtDocumentLayout* pQt = QtLayout();
    auto* pOurs = static_cast<const QAbstractTextDocumentLayoutPrivate*>(QObjectPrivate::get(this));
    auto* pTheirs = static_cast<QAbstractTextDocumentLayoutPrivate*>(QObjectPrivate::get(pQt));
    pTheirs->handlers = pOurs->handlers;
    if (pQt->paintDevice() != paintDevice())
        pQt->setPaintDevice(paintDevice());
}

bool CLxRichTextLayout::EnsureQtLayout() const {
    CLxRichTextLayoutPrivate* d = m_pPrivate.get();
    if (!d->UseQtLayout())
        return false;
    // Not in the middle of an edit (setHtml moves cursors, which ask for block rectangles): the
    // document is half built then and Qt's layout must not run over it; it is told of the change
    // when the edit ends, and until then answers from what it has, as it does when installed.
    if (d->bQtStale && document() && !document()->docHandle()->isInEditBlock()) {
        d->bQtStale = false;
        d->bDirty = true;  // our own line tables no longer describe the blocks
        ++d->i32LayoutPasses;
        SyncQtLayout();
        QtLayout()->documentChanged(0, 0, document()->characterCount());
    }
    return true;
}

void CLxRichTextLayout::EnsureLayout() const {
    CLxRichTextLayoutPrivate* d = m_pPrivate.get();
    if (!d->bDirty)
        return;
    d->bDirty = false;  // first: inline-object handlers may ask for sizes while we lay out
    d->bQtStale = true;
    ++d->i32LayoutPasses;
    QTextDocument* doc = document();
    const QSizeF oldSize = d->size;
    d->vecBlocks.clear();
    d->i32LineCount = 0;
    d->idealWidth = 0;
    if (!doc) {
        d->size = QSizeF();
        return;
    }
    QPaintDevice* pDevice = paintDevice();
    const QTextFrameFormat root = doc->rootFrame()->frameFormat();
    const qreal frameLeft = root.leftMargin() + root.padding() + root.border();
    const qreal frameRight = root.rightMargin() + root.padding() + root.border();
    const qreal frameTop = root.topMargin() + root.padding() + root.border();
    const qreal frameBottom = root.bottomMargin() + root.padding() + root.border();
    const qreal textWidth = doc->textWidth();
    const bool bWrap = textWidth >= 0;
    qreal avail = bWrap ? qMax<qreal>(0, textWidth - frameLeft - frameRight) : kUnboundedWidth;

    // Without a text width the lines get as wide as the widest one; a second pass places
    // centred and right-aligned text within that width.
    for (int pass = 0; pass < 2; ++pass) {
        d->vecBlocks.clear();
        d->i32LineCount = 0;
        qreal y = frameTop;
        qreal ideal = 0;
        bool bHavePrev = false;
        qreal prevBottom = 0;
        bool bAllLeft = true;
        for (QTextBlock block = doc->begin(); block.isValid(); block = block.next()) {
            QTextLayout* tl = block.layout();
            if (!block.isVisible()) {
                tl->clearLayout();
                continue;
            }
            const QTextBlockFormat bf = block.blockFormat();
            y += bHavePrev ? qMax(prevBottom, bf.topMargin()) : bf.topMargin();

            QTextOption option = doc->defaultTextOption();
            Qt::LayoutDirection dir = bf.layoutDirection();
            if (dir == Qt::LayoutDirectionAuto)
                dir = block.textDirection();
            option.setTextDirection(dir);
            Qt::Alignment align = option.alignment();
            if (bf.hasProperty(QTextFormat::BlockAlignment))
                align = bf.alignment();
            align = VisualAlignment(dir, align);
            option.setAlignment(align);
            if (bf.nonBreakableLines() || !bWrap)
                option.setWrapMode(QTextOption::ManualWrap);
            if (!bf.tabPositions().isEmpty())
                option.setTabs(bf.tabPositions());
            tl->setTextOption(option);
            tl->setPosition(QPointF(0, y));

            const qreal blockIndent = BlockIndent(doc, block);
            const qreal left = frameLeft + bf.leftMargin() + blockIndent;
            const qreal lineWidth = qMax<qreal>(0, avail - bf.leftMargin() - bf.rightMargin() - blockIndent);

            CLxRichTextLayoutPrivate::BlockInfo info;
            info.block = block;
            info.i32Position = block.position();
            info.bLeftAligned = !(align & (Qt::AlignRight | Qt::AlignHCenter));
            bAllLeft = bAllLeft && info.bLeftAligned;

            d->bAllTextShown = true;
            tl->beginLayout();
            int count = 0;
            qreal ly = 0;
            bool bStopped = false;
            QTextLine last;
            for (;;) {
                QTextLine line = tl->createLine();
                if (!line.isValid())
                    break;
                const qreal indent = count == 0 ? bf.textIndent() : 0;
                line.setLineWidth(qMax<qreal>(0, lineWidth - indent));
                line.setPosition(QPointF(left + indent, ly));
                ly += bf.lineHeight(line.height(), 1.0);
                last = line;
                ++count;
                if (d->i32MaxLineCount > 0) {
                    if (count >= d->i32MaxLineCount) {
                        bStopped = true;
                        break;
                    }
                } else if (d->u32MaxHeight != 0 && line.y() + line.height() >= qreal(d->u32MaxHeight)) {
                    bStopped = true;
                    break;
                }
            }
            if (bStopped) {
                const int laid = last.textStart() + last.textLength();
                d->bAllTextShown = laid >= block.length() - 1;
                if (!d->bAllTextShown) {
                    // Room for "..." in the font of the last character shown.
                    int lastChar = laid - 1;
                    const QString text = block.text();
                    while (lastChar > last.textStart() && lastChar < text.size() &&
                           (text.at(lastChar).isSpace() || text.at(lastChar) == QChar::LineSeparator))
                        --lastChar;
                    QFont font = FormatAt(block, qMax(0, lastChar)).font().resolve(doc->defaultFont());
                    const QFontMetricsF fm = pDevice ? QFontMetricsF(font, pDevice) : QFontMetricsF(font);
                    info.ellipsisWidth = fm.horizontalAdvance(kEllipsis);
                    if (info.ellipsisWidth <= 0)
                        info.ellipsisWidth = d->i32EllipsisWidth;
                    info.ellipsisFont = font;
                    const qreal indent = count == 1 ? bf.textIndent() : 0;
                    last.setLineWidth(qMax<qreal>(0, lineWidth - indent - info.ellipsisWidth));
                    ly = last.y() + bf.lineHeight(last.height(), 1.0);
                    info.bCut = true;
                }
            }
            tl->endLayout();

            for (int i = 0; i < tl->lineCount(); ++i) {
                const QTextLine l = tl->lineAt(i);
                ideal = qMax(ideal, l.x() + l.naturalTextWidth() + bf.rightMargin());
            }
            if (info.bCut) {
                qreal x = last.x() + last.naturalTextWidth();
                if (align & Qt::AlignRight)
                    x = last.x() + last.width();  // the line was narrowed by the ellipsis
                else if (align & Qt::AlignHCenter)
                    x += (last.width() - last.naturalTextWidth()) / 2;
                info.ellipsisPos = QPointF(x, y + last.y() + last.ascent());
                ideal = qMax(ideal, x + info.ellipsisWidth + bf.rightMargin());
            }
            info.i32Lines = count;
            d->i32LineCount += count;
            info.rect = QRectF(0, y, bWrap ? textWidth : kUnboundedWidth, ly);
            d->vecBlocks.push_back(info);
            y += ly;
            prevBottom = bf.bottomMargin();
            bHavePrev = true;
        }
        y += prevBottom + frameBottom;
        d->idealWidth = ideal + frameRight;
        d->size = QSizeF(bWrap ? qMax(textWidth, d->idealWidth) : d->idealWidth, y);
        if (bWrap || bAllLeft || pass == 1)
            break;
        avail = qMax<qreal>(0, d->idealWidth - frameLeft - frameRight);
    }
    if (!bWrap)
        for (auto& info : d->vecBlocks)
            info.rect.setWidth(d->size.width());
    if (oldSize != d->size)
        emit const_cast<CLxRichTextLayout*>(this)->documentSizeChanged(d->size);
}

bool CLxRichTextLayout::IsAllTextShown() const {
    if (EnsureQtLayout())
        return true;
    EnsureLayout();
    for (const auto& info : m_pPrivate->vecBlocks)
        if (info.bCut)
            return false;
    return true;
}

bool CLxRichTextLayout::IsBlockCut(const QTextBlock& block) const {
    if (EnsureQtLayout())
        return false;
    EnsureLayout();
    const auto* info = m_pPrivate->Find(block.position());
    return info && info->bCut;
}

int CLxRichTextLayout::GetLineCount() const {
    if (EnsureQtLayout()) {
        documentSize();  // Qt lays large documents out in steps: finish first
        int n = 0;
        for (QTextBlock b = document()->begin(); b.isValid(); b = b.next())
            if (b.isVisible())
                n += b.layout()->lineCount();
        return n;
    }
    EnsureLayout();
    return m_pPrivate->i32LineCount;
}

QTextLine CLxRichTextLayout::GetLine(int i32Index, QTextBlock* pBlock) const {
    if (i32Index < 0)
        return QTextLine();
    if (EnsureQtLayout()) {
        documentSize();
        for (QTextBlock b = document()->begin(); b.isValid(); b = b.next()) {
            if (!b.isVisible())
                continue;
            const int n = b.layout()->lineCount();
            if (i32Index < n) {
                if (pBlock)
                    *pBlock = b;
                return b.layout()->lineAt(i32Index);
            }
            i32Index -= n;
        }
        return QTextLine();
    }
    EnsureLayout();
    for (const auto& info : m_pPrivate->vecBlocks) {
        if (i32Index < info.i32Lines) {
            if (pBlock)
                *pBlock = info.block;
            return info.block.layout()->lineAt(i32Index);
        }
        i32Index -= info.i32Lines;
    }
    return QTextLine();
}

int CLxRichTextLayout::GetLayoutPassCount() const { return m_pPrivate->i32LayoutPasses; }

QRectF CLxRichTextLayout::GetLineRect(int i32Index) const {
    QTextBlock block;
    const QTextLine line = GetLine(i32Index, &block);
    if (!line.isValid())
        return QRectF();
    // Qt places blocks inside frames and table cells: its block rectangle has the frame offsets.
    const QPointF origin = m_pPrivate->UseQtLayout() ? blockBoundingRect(block).topLeft() : block.layout()->position();
    return line.rect().translated(origin);
}

qreal CLxRichTextLayout::GetIdealWidth() const {
    if (EnsureQtLayout())
        return QtLayout()->idealWidth();
    EnsureLayout();
    return m_pPrivate->idealWidth;
}

QRectF CLxRichTextLayout::GetEllipsisRect(const QTextBlock& block) const {
    if (EnsureQtLayout())
        return QRectF();
    EnsureLayout();
    const auto* info = m_pPrivate->Find(block.position());
    if (!info || !info->bCut || !m_pPrivate->bShowEllipsis)
        return QRectF();
    const QFontMetricsF fm(info->ellipsisFont);
    return QRectF(info->ellipsisPos.x(), info->ellipsisPos.y() - fm.ascent(), info->ellipsisWidth, fm.height());
}

// Selections are half transparent so the text's own colours show through.
static void HalfTransparent(QTextCharFormat& format) {
    if (!format.hasProperty(QTextFormat::BackgroundBrush))
        return;
    QBrush brush = format.background();
    QColor c = brush.color();
    c.setAlpha(128);
    brush.setColor(c);
    format.setBackground(brush);
}

void CLxRichTextLayout::draw(QPainter* pPainter, const PaintContext& context) {
    if (!pPainter)
        return;
    if (EnsureQtLayout()) {
        PaintContext ctx = context;
        for (Selection& sel : ctx.selections)
            HalfTransparent(sel.format);
        QtLayout()->draw(pPainter, ctx);
        return;
    }
    EnsureLayout();
    const CLxRichTextLayoutPrivate* d = m_pPrivate.get();
    const QRectF clip = context.clip;
    const QPen textPen(context.palette.color(QPalette::Text));
    pPainter->save();
    pPainter->setPen(textPen);
    std::shared_ptr<const QColor> spEllipsisColor;
    bool bEllipsisColorLooked = false;
    for (const auto& info : d->vecBlocks) {
        if (clip.isValid() && (info.rect.bottom() < clip.top() || info.rect.top() > clip.bottom()))
            continue;
        const QTextBlock& block = info.block;
        QTextLayout* tl = block.layout();
        const QBrush background = block.blockFormat().background();
        if (background.style() != Qt::NoBrush)
            pPainter->fillRect(info.rect, background);

        const int blockPos = block.position();
        const int blockLen = block.length();
        QVector<QTextLayout::FormatRange> selections;
        for (const Selection& sel : context.selections) {
            const int start = sel.cursor.selectionStart() - blockPos;
            const int end = sel.cursor.selectionEnd() - blockPos;
            if (start < blockLen && end > 0 && end > start) {
                QTextLayout::FormatRange range;
                range.start = start;
                range.length = end - start;
                range.format = sel.format;
                HalfTransparent(range.format);
                selections.append(range);
            }
        }
        tl->draw(pPainter, QPointF(0, 0), selections, clip);
        if (block.textList())
            DrawListMarker(pPainter, document(), block, context.palette.brush(QPalette::Text));
        if (context.cursorPosition >= blockPos && context.cursorPosition < blockPos + blockLen)
            tl->drawCursor(pPainter, QPointF(0, 0), context.cursorPosition - blockPos);

        if (info.bCut && d->bShowEllipsis) {
            if (!bEllipsisColorLooked) {
                lx_ui_res::Provider::instance()->get(spEllipsisColor, d->strEllipsisTextColor);
                bEllipsisColorLooked = true;
            }
            pPainter->setPen(spEllipsisColor ? QPen(*spEllipsisColor) : textPen);
            pPainter->setFont(info.ellipsisFont);
            pPainter->drawText(info.ellipsisPos, kEllipsis);
            pPainter->setPen(textPen);
        }
    }
    pPainter->restore();
}

int CLxRichTextLayout::hitTest(const QPointF& point, Qt::HitTestAccuracy accuracy) const {
    if (EnsureQtLayout())
        return QtLayout()->hitTest(point, accuracy);
    EnsureLayout();
    const auto& blocks = m_pPrivate->vecBlocks;
    const bool bFuzzy = accuracy == Qt::FuzzyHit;
    for (const auto& info : blocks) {
        if (point.y() < info.rect.top())
            return bFuzzy ? info.i32Position : -1;
        if (point.y() >= info.rect.bottom())
            continue;
        const QTextLayout* tl = info.block.layout();
        const QPointF pos = point - tl->position();
        int offset = 0;
        bool bExact = false;
        for (int i = 0; i < tl->lineCount(); ++i) {
            const QTextLine line = tl->lineAt(i);
            const QRectF lr = line.naturalTextRect();
            if (lr.top() > pos.y()) {
                offset = qMin(offset, line.textStart());
            } else if (lr.bottom() <= pos.y()) {
                offset = qMax(offset, line.textStart() + line.textLength());
            } else {
                bExact = lr.left() <= pos.x() && lr.right() >= pos.x();
                offset =
                    line.xToCursor(pos.x(), bFuzzy ? QTextLine::CursorBetweenCharacters : QTextLine::CursorOnCharacter);
                break;
            }
        }
        if (!bFuzzy && !bExact)
            return -1;
        return info.i32Position + offset;
    }
    if (!bFuzzy || blocks.empty())
        return bFuzzy ? 0 : -1;
    // Below everything: the end of the text that has lines.
    const auto& lastInfo = blocks.back();
    const QTextLayout* tl = lastInfo.block.layout();
    if (tl->lineCount() == 0)
        return lastInfo.i32Position;
    const QTextLine line = tl->lineAt(tl->lineCount() - 1);
    return lastInfo.i32Position + line.textStart() + line.textLength();
}

int CLxRichTextLayout::pageCount() const {
    if (EnsureQtLayout())
        return QtLayout()->pageCount();
    return 1;
}

QSizeF CLxRichTextLayout::documentSize() const {
    if (EnsureQtLayout())
        return QtLayout()->documentSize();
    EnsureLayout();
    return m_pPrivate->size;
}

QRectF CLxRichTextLayout::frameBoundingRect(QTextFrame* pFrame) const {
    if (EnsureQtLayout())
        return QtLayout()->frameBoundingRect(pFrame);
    if (!pFrame || !document() || pFrame != document()->rootFrame())
        return QRectF();
    EnsureLayout();
    return QRectF(QPointF(0, 0), m_pPrivate->size);
}

QRectF CLxRichTextLayout::blockBoundingRect(const QTextBlock& block) const {
    if (EnsureQtLayout())
        return QtLayout()->blockBoundingRect(block);
    if (!block.isValid())
        return QRectF();
    EnsureLayout();
    const auto* info = m_pPrivate->Find(block.position());
    return info ? info->rect : QRectF();
}

// As Qt's document layout: a handler's size becomes the object's width and height; objects aligned
// to the middle sit around the middle of the x-height, all others stand on the baseline.
void CLxRichTextLayout::resizeInlineObject(QTextInlineObject item, int posInDocument, const QTextFormat& format) {
    if (m_pPrivate->UseQtLayout()) {
        SyncQtLayout();
        QtLayout()->resizeInlineObject(item, posInDocument, format);
        return;
    }
    const QTextCharFormat f = format.toCharFormat();
    QTextObjectInterface* pHandler = handlerForObject(f.objectType());
    if (!pHandler)
        return;
    const QSizeF size = pHandler->intrinsicSize(document(), posInDocument, format);
    item.setWidth(size.width());
    if (f.verticalAlignment() == QTextCharFormat::AlignMiddle) {
        const QFontMetricsF fm(f.font());
        const qreal halfX = fm.xHeight() / 2.;
        item.setAscent((size.height() + halfX) / 2.);
        item.setDescent((size.height() - halfX) / 2.);
    } else {
        item.setDescent(0);
        item.setAscent(size.height());
    }
}

// Qt's layout places floating objects here; ours keeps every object in the line.
void CLxRichTextLayout::positionInlineObject(QTextInlineObject item, int posInDocument, const QTextFormat& format) {
    if (m_pPrivate->UseQtLayout())
        QtLayout()->positionInlineObject(item, posInDocument, format);
}

void CLxRichTextLayout::drawInlineObject(QPainter* pPainter, const QRectF& rect, QTextInlineObject item,
                                         int posInDocument, const QTextFormat& format) {
    if (m_pPrivate->UseQtLayout()) {
        SyncQtLayout();
        QtLayout()->drawInlineObject(pPainter, rect, item, posInDocument, format);
        return;
    }
    QAbstractTextDocumentLayout::drawInlineObject(pPainter, rect, item, posInDocument, format);
}
