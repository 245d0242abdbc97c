#include <LxUIKit/WebImage/LxSvgDocumentGuard.h>

#include <QBuffer>
#include <QFile>
#include <QHash>
#include <QImageReader>
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

// "data:[<mime>][;base64],<data>": a picture in it must be raster and of a sane size.
bool EmbeddedDataIsSafe(const QStringRef& value) {
    const int comma = value.indexOf(QLatin1Char(','));
    if (comma < 0)
        return false;
    const QStringRef header = value.left(comma);
    if (header.contains(QLatin1String("svg"), Qt::CaseInsensitive))
        return false;
    if (!header.startsWith(QLatin1String("data:image/"), Qt::CaseInsensitive))
        return true;  // not a picture: QSvgRenderer has no use for it
    const QByteArray payload = value.mid(comma + 1).toLatin1();
    const QByteArray bytes = header.endsWith(QLatin1String(";base64"), Qt::CaseInsensitive)
                                 ? QByteArray::fromBase64(payload)
                                 : QByteArray::fromPercentEncoding(payload);
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format().toLower();
    if (format.isEmpty() || format == "svg" || format == "svgz")
        return false;
    const QSize size = reader.size();
    return size.isValid() && qint64(size.width()) * size.height() <= CLxSvgDocumentGuard::kMaxEmbeddedPixels;
}

struct Element {
    int i32Parent = -1;
    std::vector<int> vecChildren;
    QString strUseTarget;  // id a <use> draws
};

class CUseExpansion {
public:
    CUseExpansion(const std::vector<Element>& elements, const QHash<QString, int>& ids)
        : m_elements(elements),
          m_ids(ids),
          m_vecWeight(elements.size(), -1),
          m_vecHops(elements.size(), 0),
          m_vecState(elements.size(), 0) {}

    // Elements drawn for element `i`, saturated just above the bound; -1 for a cycle or for a chain
    // of <use> hops over the bound. Weights and chain lengths are memoised per element, so the
    // answer does not depend on the order in which shared elements are first reached.
    qint64 Weight(int i) {
        const qint64 w = Expand(i);
        return w < 0 || m_vecHops[size_t(i)] > CLxSvgDocumentGuard::kMaxUseHops ? -1 : w;
    }

private:
    qint64 Expand(int i) {
        if (m_vecState[size_t(i)] == 2)
            return m_vecWeight[size_t(i)];
        if (m_vecState[size_t(i)] == 1)
            return -1;
        m_vecState[size_t(i)] = 1;
        qint64 w = 1;
        int hops = 0;
        const Element& e = m_elements[size_t(i)];
        for (int child : e.vecChildren) {
            const qint64 c = Expand(child);
            if (c < 0)
                return -1;
            w = qMin(w + c, kSaturated);
            hops = qMax(hops, m_vecHops[size_t(child)]);
        }
        if (!e.strUseTarget.isEmpty()) {
            auto it = m_ids.constFind(e.strUseTarget);
            if (it != m_ids.constEnd()) {
                const qint64 t = Expand(it.value());
                if (t < 0)
                    return -1;
                w = qMin(w + t, kSaturated);
                hops = qMax(hops, m_vecHops[size_t(it.value())] + 1);
            }
        }
        if (hops > CLxSvgDocumentGuard::kMaxUseHops)
            return -1;  // stop early: nothing above can be accepted either
        m_vecState[size_t(i)] = 2;
        m_vecWeight[size_t(i)] = w;
        m_vecHops[size_t(i)] = hops;
        return w;
    }

    static constexpr qint64 kSaturated = CLxSvgDocumentGuard::kMaxRenderedElements + 1;
    const std::vector<Element>& m_elements;
    const QHash<QString, int>& m_ids;
    std::vector<qint64> m_vecWeight;
    std::vector<int> m_vecHops;    // longest chain of <use> hops below the element
    std::vector<char> m_vecState;  // 0 new, 1 being expanded, 2 done
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
    QHash<QString, int> ids;
    std::vector<int> open;  // the chain of open elements
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
            for (const QXmlStreamAttribute& attr : xml.attributes()) {
                if (attr.name() == QLatin1String("id")) {
                    ids.insert(attr.value().toString(), index);
                } else if (IsHrefName(attr.name())) {
                    const QStringRef value = attr.value().trimmed();
                    if (value.startsWith(QLatin1Char('#'))) {
                        if (bUse)
                            e.strUseTarget = value.mid(1).toString();
                    } else if (value.startsWith(QLatin1String("data:"), Qt::CaseInsensitive)) {
                        if (!EmbeddedDataIsSafe(value))
                            return Verdict::EmbeddedImage;
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
