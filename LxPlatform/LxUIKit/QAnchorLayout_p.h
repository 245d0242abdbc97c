#pragma once
// Parsed anchor flags: the tokens of one flag text, read once per change of the text and applied on
// every geometry pass. Exposed to the layout, its tests and the fuzz target.

#include <QRect>
#include <QString>
#include <QStringList>

#include <vector>

namespace lx_anchor {

enum class TokenKind {
    LeftOfSibling,
    RightOfSibling,
    TopOfSibling,
    BottomOfSibling,
    LeftAlignSibling,
    RightAlignSibling,
    TopAlignSibling,
    BottomAlignSibling,
    LeftTopSibling,
    RightTopSibling,
    LeftBottomSibling,
    RightBottomSibling,
    CenterAlignSibling,
    HCenterAlignSibling,
    VCenterAlignSibling,
    Left,
    Right,
    Top,
    Bottom,
    Center,
    HCenter,
    VCenter,
    Size,
    Margin,
    SameSizeAs,
    SameWidthAs,
    SameHeightAs,
};

// Who a sibling token names.
struct Indicator {
    enum Kind { Relative, Position, Name } enKind = Name;
    int i32Value = 0;  // Relative: the signed step; Position: the 1-based position
    QString strName;
};

struct Token {
    TokenKind enKind = TokenKind::Left;
    double adValues[4] = {0, 0, 0, 0};  // edge offset (one), size (two) or margins (four)
    Indicator indicator;                // sibling forms only
};

// The prefix of each form, in classification order (sibling forms first).
const std::vector<std::pair<QString, TokenKind>>& ClassificationOrder();

// Reads a flag text; tokens that match no form or whose numbers do not read are skipped and
// described in `errors` (when given).
std::vector<Token> ParseFlags(const QString& flags, QStringList* errors);

// The indicator of a sibling token split by ':' (its last part, trimmed).
Indicator ParseIndicator(const QStringList& parts);

int ValueOrPercentageToInt(double value, int total);

// Applies the tokens to one child. `siblingRect(indicator)` answers the sibling's geometry, or
// false when there is none.
template <typename SiblingFn>
QRect Place(const std::vector<Token>& tokens, const QRect& parent, const QSize& ownSize, SiblingFn&& siblingRect);

// ---- implementation of Place ------------------------------------------------------------------

namespace detail {
// Which edge (or centre) of an axis the latest placing token fixed: a later size change keeps it.
enum class Anchor { None, Low, High, Mid };

struct Axis {
    int pos = 0;
    int len = 0;
    Anchor anchor = Anchor::None;

    void placeLow(int v) {
        pos = v;
        anchor = Anchor::Low;
    }
    void placeHigh(int end) {  // `end` is one past the last pixel
        pos = end - len;
        anchor = Anchor::High;
    }
    void placeMid(int start, int extent) {
        pos = start + (extent - len) / 2;
        anchor = Anchor::Mid;
    }
    void resize(int l) {
        if (anchor == Anchor::High)
            pos += len - l;
        else if (anchor == Anchor::Mid)
            pos += (len - l) / 2;
        len = l;
    }
    void margin(int lo, int hi, int pStart, int pExtent) {
        switch (anchor) {
        case Anchor::None:
            pos = pStart + lo;
            len = qMax(0, pExtent - lo - hi);
            anchor = Anchor::Low;
            break;
        case Anchor::Low: pos += lo; break;
        case Anchor::High: pos -= hi; break;
        case Anchor::Mid: pos += (lo - hi) / 2; break;
        }
    }
};
}  // namespace detail

template <typename SiblingFn>
QRect Place(const std::vector<Token>& tokens, const QRect& parent, const QSize& ownSize, SiblingFn&& siblingRect) {
    using detail::Axis;
    Axis h{parent.x(), ownSize.width(), detail::Anchor::None};
    Axis v{parent.y(), ownSize.height(), detail::Anchor::None};
    const int pw = parent.width();
    const int ph = parent.height();
    for (const Token& t : tokens) {
        const double* a = t.adValues;
        if (t.enKind <= TokenKind::VCenterAlignSibling) {
            QRect s;
            if (!siblingRect(t.indicator, s))
                continue;
            switch (t.enKind) {
            case TokenKind::LeftOfSibling: h.placeHigh(s.x()); break;
            case TokenKind::RightOfSibling: h.placeLow(s.x() + s.width()); break;
            case TokenKind::TopOfSibling: v.placeHigh(s.y()); break;
            case TokenKind::BottomOfSibling: v.placeLow(s.y() + s.height()); break;
            case TokenKind::LeftAlignSibling: h.placeLow(s.x()); break;
            case TokenKind::RightAlignSibling: h.placeHigh(s.x() + s.width()); break;
            case TokenKind::TopAlignSibling: v.placeLow(s.y()); break;
            case TokenKind::BottomAlignSibling: v.placeHigh(s.y() + s.height()); break;
            case TokenKind::LeftTopSibling:
                h.placeHigh(s.x());
                v.placeHigh(s.y());
                break;
            case TokenKind::RightTopSibling:
                h.placeLow(s.x() + s.width());
                v.placeHigh(s.y());
                break;
            case TokenKind::LeftBottomSibling:
                h.placeHigh(s.x());
                v.placeLow(s.y() + s.height());
                break;
            case TokenKind::RightBottomSibling:
                h.placeLow(s.x() + s.width());
                v.placeLow(s.y() + s.height());
                break;
            case TokenKind::CenterAlignSibling:
                h.placeMid(s.x(), s.width());
                v.placeMid(s.y(), s.height());
                break;
            case TokenKind::HCenterAlignSibling: h.placeMid(s.x(), s.width()); break;
            case TokenKind::VCenterAlignSibling: v.placeMid(s.y(), s.height()); break;
            default: break;
            }
            continue;
        }
        switch (t.enKind) {
        case TokenKind::Left: h.placeLow(parent.x() + ValueOrPercentageToInt(a[0], pw)); break;
        case TokenKind::Right: h.placeHigh(parent.x() + pw - ValueOrPercentageToInt(a[0], pw)); break;
        case TokenKind::Top: v.placeLow(parent.y() + ValueOrPercentageToInt(a[0], ph)); break;
        case TokenKind::Bottom: v.placeHigh(parent.y() + ph - ValueOrPercentageToInt(a[0], ph)); break;
        case TokenKind::Center:
            h.placeMid(parent.x(), pw);
            v.placeMid(parent.y(), ph);
            break;
        case TokenKind::HCenter: h.placeMid(parent.x(), pw); break;
        case TokenKind::VCenter: v.placeMid(parent.y(), ph); break;
        case TokenKind::Size:
            h.resize(ValueOrPercentageToInt(a[0], pw));
            v.resize(ValueOrPercentageToInt(a[1], ph));
            break;
        case TokenKind::Margin:
            h.margin(ValueOrPercentageToInt(a[0], pw), ValueOrPercentageToInt(a[2], pw), parent.x(), pw);
            v.margin(ValueOrPercentageToInt(a[1], ph), ValueOrPercentageToInt(a[3], ph), parent.y(), ph);
            break;
        case TokenKind::SameSizeAs:
        case TokenKind::SameWidthAs:
        case TokenKind::SameHeightAs: {
            QRect s;
            if (!siblingRect(t.indicator, s))
                break;
            if (t.enKind != TokenKind::SameHeightAs)
                h.resize(s.width());
            if (t.enKind != TokenKind::SameWidthAs)
                v.resize(s.height());
            break;
        }
        default: break;
        }
    }
    return QRect(h.pos, v.pos, qMax(0, h.len), qMax(0, v.len));
}

}  // namespace lx_anchor
