#pragma once
// Internals of CLxRichTextLayout: its state and Qt's document layout that it keeps beside itself.
// Not installed; included by the layout and by tests that inspect it.

#include <LxUIKit/RichText/LxRichTextLayout.h>

#include <QtGui/private/qtextdocumentlayout_p.h>
#include <QFont>
#include <QRectF>
#include <QSizeF>
#include <QTextBlock>

#include <algorithm>
#include <cstdint>
#include <vector>

// Qt's own document layout, used while no limit is set. It is not the document's installed
// layout, so the calls Qt's text engine makes on the installed one (inline objects, changes) are
// passed on to it; hence the protected steps are made reachable here.
class CQtDocumentLayout final : public QTextDocumentLayout {
public:
    using QTextDocumentLayout::documentChanged;
    using QTextDocumentLayout::drawInlineObject;
    using QTextDocumentLayout::positionInlineObject;
    using QTextDocumentLayout::QTextDocumentLayout;
    using QTextDocumentLayout::resizeInlineObject;
};

class CLxRichTextLayoutPrivate {
public:
    void Init();

    int32_t i32MaxLineCount = 0;
    bool bShowEllipsis = true;
    bool bAllTextShown = true;  // per block while laying out: every character got a line
    uint32_t u32MaxHeight = 0;
    int32_t i32EllipsisWidth = 0;
    QString strEllipsisTextColor = QStringLiteral("ct_text_h1");

    struct BlockInfo {
        QTextBlock block;
        int i32Position = 0;
        QRectF rect;  // the block's lines, full text width, document coordinates
        int i32Lines = 0;
        bool bCut = false;
        QFont ellipsisFont;
        QPointF ellipsisPos;  // baseline start, document coordinates
        qreal ellipsisWidth = 0;
        bool bLeftAligned = true;
    };
    std::vector<BlockInfo> vecBlocks;
    bool bDirty = true;
    QSizeF size;
    qreal idealWidth = 0;
    int i32LineCount = 0;
    int i32LayoutPasses = 0;

    // Qt's layout, in charge while no limit is set; stale when the document changed or our own
    // layout touched the blocks since it last laid them out.
    CQtDocumentLayout* pQtLayout = nullptr;  // made when first needed
    bool bQtStale = true;
    // Taken from the limits by Relayout(), like every other effect of the setters.
    bool bUseQt = true;
    bool UseQtLayout() const { return bUseQt; }

    const BlockInfo* Find(int i32Position) const {
        auto it = std::lower_bound(vecBlocks.begin(), vecBlocks.end(), i32Position,
                                   [](const BlockInfo& b, int pos) { return b.i32Position < pos; });
        return it != vecBlocks.end() && it->i32Position == i32Position ? &*it : nullptr;
    }
};
