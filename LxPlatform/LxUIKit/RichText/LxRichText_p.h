#pragma once
// CLxRichText's bookkeeping: its content, its documents and text control (made when first
// needed), the dirty flags that keep layout lazy, the size cache and the touch and hover state.
// Not installed.

#include <LxUIKit/RichText/LxRichText.h>
#include <LxUIKit/RichText/LxRichTextControl_p.h>
#include <LxUIKit/RichText/LxRichTextDocumentBuilder_p.h>

#include <QElapsedTimer>
#include <QPointer>
#include <QSize>
#include <QTextDocument>

class CLxRichTextPrivate {
public:
    using SnippetList = CLxRichText::SnippetList;

    SnippetList vecSnippets;
    std::shared_ptr<LxRichTextConfig> spConfig;
    int i32MaxLine = 0;
    QString strSelectionColorKey = QStringLiteral("ck_blue300_50");
    CLxRichText::TextAlignment enAlignment = CLxRichText::AlignLeft;
    CLxRichText::WrapMode enWrapMode = CLxRichText::WrapAtWordBoundaryOrAnywhere;
    bool bSelectEnable = true;
    bool bShowEllipsis = true;
    unsigned int u32TextMaxHeight = 0;
    QString strText;                // the shown HTML
    bool bTextStale = false;        // strText is still to be joined from the snippets' markup
    bool bHtmlFromSnippets = true;  // false while HTML given through setText is shown
    // strText as pieces with prepared formats (when it came from snippets of known shapes), so a
    // document is filled without reading HTML.
    std::vector<CLxRichTextDocumentBuilder::Piece> vecPieces;
    bool bPiecesValid = false;

    // The shown document with its layout, the text control over it, and the measuring document.
    // Each is made when something first needs it: a row that is built but never measured,
    // painted or clicked costs no document at all.
    QPointer<QTextDocument> pDoc;
    QPointer<CLxRichTextLayout> pLayout;
    QPointer<CLxRichTextControl> pControl;
    QPointer<QTextDocument> pDocForCalculateSize;
    QPointer<CLxRichTextLayout> pMeasureLayout;

    bool bTextLayoutDirty = true;  // the shown document's width may be stale
    bool bMeasureDocDirty = true;  // the measuring document does not hold strText yet
    bool bThemeDirty = false;      // a theme change waits for the widget to be shown
    bool bPainted = false;
    bool bSizeChanged = false;

    // Label bookkeeping: size hints and heightForWidth answers, valid until the content, the
    // limits, the font or the style change.
    bool bValidHints = false;
    QSize sizeHint = QSize(-1, -1);
    QSize minimumSizeHint = QSize(-1, -1);
    struct SizeCacheEntry {
        int i32Width = -1;
        bool bLimited = true;
        QSize size;
    };
    SizeCacheEntry sizeCache[4];
    int i32NextCacheSlot = 0;

    // A touch press becomes a click on release when it was a tap.
    bool bTouchPressed = false;
    QPoint ptTouchPress;
    QElapsedTimer touchTimer;
    const CLxRichTextSnippetBase* pLastHovered = nullptr;
};
