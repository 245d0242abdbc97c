#include <LxUIKit/WebImage/LxSvgDocumentGuard_p.h>

#include <LxUIKit/WebImage/LxWebImageDecoder_p.h>

#include <QFile>
#include <QHash>
#include <QXmlStreamReader>

#include <zlib.h>

#include <vector>

namespace {

using Verdict = CLxSvgDocumentGuard::Verdict;

bool IsGzip(const QByteArray& bytes) {
    return bytes.size() >= 2 && quint8(bytes[0]) == 0x1f && quint8(bytes[1]) == 0x8b;
}

// Inflates a gzip stream, refusing to produce more than `limit` bytes.
Verdict Gunzip(const QByteArray& in, qint64 limit, QByteArray& out) {
    z_stream zs{};
    if (inflateInit2(&zs, 16 + MAX_WBITS) != Z_OK)
        return Verdict::Malformed;
    zs.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(in.constData()));
    zs.avail_in = uInt(in.size());
    out.clear();
    char chunk[64 * 1024];
    Verdict verdict = Verdict::Malformed;
    for (;;) {
        zs.next_out = reinterpret_cast<Bytef*>(chunk);
        zs.avail_out = sizeof(chunk);
        const int rc = inflate(&zs, Z_NO_FLUSH);
        const qint64 produced = qint64(sizeof(chunk) - zs.avail_out);
        if (out.size() + produced > limit) {
            verdict = Verdict::TooLarge;
            break;
        }
        out.append(chunk, int(produced));
        if (rc == Z_STREAM_END) {
            verdict = Verdict::Ok;
            break;
        }
        if (rc != Z_OK || (produced == 0 && zs.avail_in == 0))
            break;  // damaged or truncated stream
    }
    inflateEnd(&zs);
    if (verdict != Verdict::Ok)
        out.clear();
    return verdict;
}

bool IsHrefName(const QStringRef& name) { return name == QLatin1String("href"); }

// An embedded "data:" picture, read exactly as QSvgRenderer reads it: the value is trimmed, and
// what follows the last "base64," is base64-decoded and handed to QImage::fromData. The header up
// to the first comma must end in that same "base64," (any other split is a disguise: a harmless
// picture for a reader that splits at the first comma, another for the renderer). The picture
// must be a raster format the kit decodes, pass the decoder's structure walk and fit in what is
// left of the document's pixel budget.
Verdict CheckEmbedded(const QString& value, qint64& i64PixelsLeft) {
    const int marker = value.lastIndexOf(QLatin1String("base64,"));
    const int comma = value.indexOf(QLatin1Char(','));
    if (marker < 0 || marker + 6 != comma)
        return Verdict::EmbeddedImage;
    const QByteArray bytes = QByteArray::fromBase64(value.mid(marker + 7).toLatin1());
    QSize size;
    if (!CLxWebImageDecoder::CheckBounds(bytes, nullptr, &size, nullptr, i64PixelsLeft))
        return Verdict::EmbeddedImage;  // unknown, vector (a nested document), damaged or too large
    i64PixelsLeft -= qint64(size.width()) * size.height();
    return Verdict::Ok;
}

struct Element {
    int i32Parent = -1;
    std::vector<int> vecChildren;
    QString strUseTarget;   // id a <use> draws
    int i32UseTarget = -1;  // the node of that id, once the document is read
    bool bIdGroup = false;  // not an element: the elements sharing one id
};

class CUseExpansion {
public:
    // Every element with a given id is drawn by a <use> of it (which one the renderer takes
    // depends on parse order): each id becomes one extra node over its elements, so a thousand
    // <use> of a shared id walk its elements once.
    CUseExpansion(std::vector<Element>& elements, const QMultiHash<QString, int>& ids) : m_elements(elements) {
        QHash<QString, int> idNodes;
        const size_t real = elements.size();
        for (size_t i = 0; i < real; ++i) {
            const QString id = elements[i].strUseTarget;
            if (id.isEmpty() || !ids.contains(id))
                continue;
            auto it = idNodes.find(id);
            if (it == idNodes.end()) {
                it = idNodes.insert(id, int(elements.size()));
                Element group;
                group.bIdGroup = true;
                const QList<int> members = ids.values(id);
                group.vecChildren.assign(members.begin(), members.end());
                elements.push_back(std::move(group));
            }
            elements[i].i32UseTarget = it.value();
        }
        m_vecWeight.assign(elements.size(), -1);
        m_vecHops.assign(elements.size(), 0);
        m_vecState.assign(elements.size(), 0);
    }

    // Elements drawn for element `i`, saturated just above the bound; -1 for a cycle or for a chain
    // of <use> hops over the bound. Weights and chain lengths are memoised per element, so the
    // answer does not depend on the order in which shared elements are first reached. The walk
    // keeps its own stack: a chain of thousands of <use> links costs heap, not call stack.
    qint64 Weight(int i) {
        if (m_vecState[size_t(i)] == 2)
            return m_vecWeight[size_t(i)];
        struct Frame {
            int i32Node;
            size_t nNext;  // next successor to visit: children, then the <use> target
        };
        std::vector<Frame> stack{{i, 0}};
        m_vecState[size_t(i)] = 1;
        while (!stack.empty()) {
            Frame& f = stack.back();
            const int node = f.i32Node;
            const int next = Successor(node, f.nNext);
            if (next >= 0) {
                ++f.nNext;
                if (m_vecState[size_t(next)] == 1)
                    return -1;  // a cycle
                if (m_vecState[size_t(next)] == 0) {
                    m_vecState[size_t(next)] = 1;
                    stack.push_back({next, 0});  // `f` is not used after this
                }
                continue;
            }
            if (!Finish(node))
                return -1;  // nothing above can be accepted either
            stack.pop_back();
        }
        return m_vecWeight[size_t(i)];
    }

private:
    // The k-th element drawn below `i`; -1 past the last.
    int Successor(int i, size_t k) const {
        const Element& e = m_elements[size_t(i)];
        if (k < e.vecChildren.size())
            return e.vecChildren[k];
        return k == e.vecChildren.size() ? e.i32UseTarget : -1;
    }

    // Every successor of `i` is done: its weight and chain length follow.
    bool Finish(int i) {
        const Element& e = m_elements[size_t(i)];
        qint64 w = e.bIdGroup ? 0 : 1;
        int hops = 0;
        for (int child : e.vecChildren) {
            w = qMin(w + m_vecWeight[size_t(child)], kSaturated);
            hops = qMax(hops, m_vecHops[size_t(child)]);
        }
        if (e.i32UseTarget >= 0) {
            w = qMin(w + m_vecWeight[size_t(e.i32UseTarget)], kSaturated);
            hops = qMax(hops, m_vecHops[size_t(e.i32UseTarget)] + 1);
        }
        if (hops > CLxSvgDocumentGuard::kMaxUseHops)
            return false;
        m_vecState[size_t(i)] = 2;
        m_vecWeight[size_t(i)] = w;
        m_vecHops[size_t(i)] = hops;
        return true;
    }

    static constexpr qint64 kSaturated = CLxSvgDocumentGuard::kMaxRenderedElements + 1;
    const std::vector<Element>& m_elements;
    std::vector<qint64> m_vecWeight;
    std::vector<int> m_vecHops;    // longest chain of <use> hops below the element
    std::vector<char> m_vecState;  // 0 new, 1 on the walk's stack, 2 done
};

}  // namespace

CLxSvgDocumentGuard::Verdict CLxSvgDocumentGuard::ReadChecked(const QString& filePath, QByteArray& document) {
    document.clear();
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return Verdict::Unreadable;
    if (file.size() > kMaxFileBytes)
        return Verdict::TooLarge;
    const QByteArray bytes = file.read(kMaxFileBytes + 1);
    if (bytes.size() > kMaxFileBytes)
        return Verdict::TooLarge;  // grew while being read, or not a regular file
    return Check(bytes, document);
}

CLxSvgDocumentGuard::Verdict CLxSvgDocumentGuard::Check(const QByteArray& bytes, QByteArray& document) {
    document.clear();
    QByteArray plain;
    if (IsGzip(bytes)) {
        const Verdict v = Gunzip(bytes, kMaxDocumentBytes, plain);
        if (v != Verdict::Ok)
            return v;
    } else {
        if (bytes.size() > kMaxDocumentBytes)
            return Verdict::TooLarge;
        plain = bytes;
    }

    QXmlStreamReader xml(plain);
    std::vector<Element> elements;
    QMultiHash<QString, int> ids;
    std::vector<int> open;  // the chain of open elements
    qint64 i64EmbeddedPixelsLeft = kMaxEmbeddedPixels;
    bool bRootSeen = false;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::DTD:
            if (!xml.entityDeclarations().isEmpty())
                return Verdict::EntityDeclaration;
            break;
        case QXmlStreamReader::EntityReference: return Verdict::EntityDeclaration;
        case QXmlStreamReader::StartElement: {
            if (!bRootSeen) {
                bRootSeen = true;
                if (xml.name() != QLatin1String("svg"))
                    return Verdict::NotSvg;
            }
            if (int(elements.size()) >= kMaxElements)
                return Verdict::TooManyElements;
            if (int(open.size()) >= kMaxDepth)
                return Verdict::TooDeep;
            const int index = int(elements.size());
            elements.emplace_back();
            Element& e = elements.back();
            e.i32Parent = open.empty() ? -1 : open.back();
            if (e.i32Parent >= 0)
                elements[size_t(e.i32Parent)].vecChildren.push_back(index);
            const bool bUse = xml.name() == QLatin1String("use");
            const bool bLink = xml.name() == QLatin1String("a");  // a link is followed by nobody
            const QXmlStreamAttributes attributes = xml.attributes();
            for (const QXmlStreamAttribute& attr : attributes) {
                if (attr.name() == QLatin1String("id")) {
                    ids.insert(attr.value().toString(), index);
                } else if (IsHrefName(attr.name())) {
                    // Trimmed as the renderer trims it; "data" is matched as case-sensitively as
                    // the renderer matches it (anything else would be opened as a file).
                    const QString value = attr.value().toString().trimmed();
                    if (value.startsWith(QLatin1Char('#'))) {
                        if (bUse)
                            e.strUseTarget = value.mid(1);
                    } else if (value.startsWith(QLatin1String("data:"))) {
                        const Verdict v = CheckEmbedded(value, i64EmbeddedPixelsLeft);
                        if (v != Verdict::Ok)
                            return v;
                    } else if (!value.isEmpty() && !bLink) {
                        return Verdict::ExternalReference;
                    }
                }
            }
            open.push_back(index);
            break;
        }
        case QXmlStreamReader::EndElement:
            if (!open.empty())
                open.pop_back();
            break;
        default: break;
        }
    }
    if (xml.hasError())
        return Verdict::Malformed;
    if (!bRootSeen)
        return Verdict::NotSvg;

    CUseExpansion expansion(elements, ids);
    const qint64 drawn = expansion.Weight(0);
    if (drawn < 0 || drawn > kMaxRenderedElements)
        return Verdict::UseExpansion;
    document = plain;
    return Verdict::Ok;
}

const char* CLxSvgDocumentGuard::VerdictName(Verdict verdict) {
    switch (verdict) {
    case Verdict::Ok: return "ok";
    case Verdict::Unreadable: return "unreadable";
    case Verdict::TooLarge: return "too large";
    case Verdict::Malformed: return "malformed";
    case Verdict::NotSvg: return "not svg";
    case Verdict::TooManyElements: return "too many elements";
    case Verdict::TooDeep: return "nested too deep";
    case Verdict::EntityDeclaration: return "entity declaration";
    case Verdict::ExternalReference: return "external reference";
    case Verdict::EmbeddedImage: return "embedded picture refused";
    case Verdict::UseExpansion: return "use expansion";
    }
    return "?";
}
