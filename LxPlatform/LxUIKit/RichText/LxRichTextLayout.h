#pragma once
// CLxRichTextLayout: the document layout of CLxRichText. It lays out paragraphs of styled text
// with anchors, images and inline objects (drawn by the handlers registered on it; Qt's image
// handler is registered for ordinary images), draws selections, and answers hit tests, and it adds
// three things to a plain document layout, applied to every block (paragraph) separately:
//
//  - a line limit (SetMaxLineCount): no more than that many lines are laid out per block;
//  - a height limit (SetMaxHeight), used only when there is no line limit: lines stop after the
//    first one whose bottom reaches the limit (measured from the block's top; that line is kept);
//  - an ellipsis: when a block was cut, its last line is laid out again narrower by the width of
//    "..." and "..." is drawn after it in the ellipsis colour (SetShowEllipsis(false) cuts and
//    narrows the same way but draws nothing).
//
// Two engines, one interface:
//  - Without a limit, Qt's own document layout does the work, so any HTML looks as Qt shows it:
//    lists with their markers and indents, tables with cells side by side, floats, frames. It is
//    kept beside this object (Qt's text engine talks to the installed layout; the calls are passed
//    on) and lays out eagerly on changes, as Qt does.
//  - With a limit, our own engine lays out every block of the document in order, in the root
//    frame: paragraphs, inline objects, list items (indented by their list, with Qt's markers:
//    number text, disc, circle or square). Tables are not built as grids there, their cells stack
//    as paragraphs, and floating objects stay in the line: limits are meant for feed posts, whose
//    documents hold paragraphs.
// Switching between them (setting or lifting a limit) lays the document out again.
//
// With a limit, text after a cut gets no lines at all, so the document size, and with it the
// widget's size, covers only the visible lines. The "..." is drawn in the font of the last
// character shown and the line is narrowed by its width in that font, so it fits whatever size the
// text has; the width of "..." in the application's default font (GetEllipsisWidth, measured once)
// is the fallback when that font gives none. Selections are drawn half transparent in both modes.
//
// Our engine is lazy: a change only marks the layout dirty and asks for a repaint; sizes, hit
// tests and painting lay the document out when they need it. The setters do not relayout by
// themselves: call Relayout() after changing limits (CLxRichText does).

#include <LxUIKit/LxUIKitExport.h>
#include <QAbstractTextDocumentLayout>
#include <QTextLine>

#include <memory>

class CLxRichTextLayoutPrivate;
class CQtDocumentLayout;
class QTextBlock;

class LXUIKIT_EXPORT CLxRichTextLayout : public QAbstractTextDocumentLayout {
    Q_OBJECT
public:
    explicit CLxRichTextLayout(QTextDocument* pDoc);
    ~CLxRichTextLayout() override;

    void SetMaxLineCount(int i32MaxLineCount);  // 0 or less: no line limit
    void SetShowEllipsis(bool bShow);
    void SetMaxHeight(unsigned int u32MaxHeight);  // 0: no height limit
    void SetEllipsisTextColor(const QString& strColorKey);
    int GetMaxLineCount() const;
    bool IsShowEllipsis() const;
    unsigned int GetMaxHeight() const;
    QString GetEllipsisTextColor() const;
    int GetEllipsisWidth() const;

    // Marks the layout dirty so the next query or paint lays the document out again.
    void Relayout();

    // Whether every block got lines for all its text (no cut anywhere).
    bool IsAllTextShown() const;
    bool IsBlockCut(const QTextBlock& block) const;
    // Lines laid out, counted over all blocks in order.
    int GetLineCount() const;
    // The line with that index over all blocks (its position is relative to its block's layout
    // position, as QTextLine positions are); invalid when out of range. *pBlock receives the block.
    QTextLine GetLine(int i32Index, QTextBlock* pBlock = nullptr) const;
    // The line with that index, in document coordinates (blocks in table cells included).
    QRectF GetLineRect(int i32Index) const;
    // Whether Qt's own document layout is in charge: no line limit and no height limit at the last
    // Relayout().
    bool IsQtLayoutInCharge() const;
    // Widest line's natural right edge plus the right margins: the width the content really uses.
    qreal GetIdealWidth() const;
    // How many times the document was laid out (for diagnostics and tests of caching).
    int GetLayoutPassCount() const;
    // Where "..." is drawn for a cut block, in document coordinates; empty when none is drawn.
    QRectF GetEllipsisRect(const QTextBlock& block) const;

    void draw(QPainter* pPainter, const PaintContext& context) override;
    int hitTest(const QPointF& point, Qt::HitTestAccuracy accuracy) const override;
    int pageCount() const override;
    QSizeF documentSize() const override;
    QRectF frameBoundingRect(QTextFrame* pFrame) const override;
    QRectF blockBoundingRect(const QTextBlock& block) const override;

protected:
    void documentChanged(int from, int charsRemoved, int charsAdded) override;
    void resizeInlineObject(QTextInlineObject item, int posInDocument, const QTextFormat& format) override;
    void positionInlineObject(QTextInlineObject item, int posInDocument, const QTextFormat& format) override;
    void drawInlineObject(QPainter* pPainter, const QRectF& rect, QTextInlineObject item, int posInDocument,
                          const QTextFormat& format) override;

private:
    void EnsureLayout() const;
    // True when Qt's layout is in charge (no limit), after bringing it up to date.
    bool EnsureQtLayout() const;
    void SyncQtLayout() const;
    CQtDocumentLayout* QtLayout() const;

    std::unique_ptr<CLxRichTextLayoutPrivate> m_pPrivate;
};
