#pragma once
// CLxSvgDocumentGuard: the bounds every SVG from the network passes before QSvgRenderer sees it.
//
// One streaming QXmlStreamReader pass over the bytes (nothing is built but a small table of
// element ids and references) refuses a document that would hang or exhaust the process:
// - file over kMaxFileBytes (2 MiB) on disk, or over kMaxDocumentBytes (4 MiB) once an .svgz is
//   inflated (inflation stops at the bound: a gzip bomb costs 4 MiB at most);
// - more than kMaxElements (20,000) elements, or elements nested deeper than kMaxDepth (64);
// - more than kMaxRenderedElements (100,000) elements drawn once every <use> is expanded (a few
//   nested <use> chains would otherwise draw millions of shapes), a <use> chain longer than
//   kMaxUseHops (16), or a <use> that (indirectly) refers to itself; when several elements share
//   an id, a <use> of it counts all of them (the renderer's choice depends on parse order). The
//   expansion keeps its own stack, so a chain of any length costs no call stack;
// - a DTD that declares entities (entity expansion bombs);
// - any reference that leaves the document: an href (of any namespace prefix) other than "#id" or
//   a "data:" URI, the scheme matched case-sensitively as the renderer does (it opens "DATA:..."
//   as a file). The href of an <a> link is left alone: nothing follows it;
// - a "data:" URI that the renderer would read differently: QSvgRenderer decodes what follows the
//   last "base64,", so that marker must end the header at the first comma;
// - an embedded picture that is not a raster format the kit decodes (an SVG inside would skip
//   these checks and could reference files), that fails the decoder's structure walk, or that
//   takes the document's embedded pictures over kMaxEmbeddedPixels (16 Mi) pixels in all (the
//   renderer decodes every <image> when it loads the document);
// - a root element that is not <svg>, or XML that is not well formed (truncated files included).
// Scripts and event attributes are left in place: QSvgRenderer never runs them.
//
// Everything is read from memory: the checked bytes are what QSvgRenderer loads, so the file can
// not change between the check and the parse.

#include <QByteArray>
#include <QString>

class CLxSvgDocumentGuard {
public:
    static constexpr qint64 kMaxFileBytes = 2LL * 1024 * 1024;
    static constexpr qint64 kMaxDocumentBytes = 4LL * 1024 * 1024;
    static constexpr int kMaxElements = 20000;
    static constexpr int kMaxDepth = 64;
    static constexpr qint64 kMaxRenderedElements = 100000;
    static constexpr int kMaxUseHops = 16;
    static constexpr qint64 kMaxEmbeddedPixels = 16LL * 1024 * 1024;

    enum class Verdict {
        Ok = 0,
        Unreadable,         // missing or unreadable file
        TooLarge,           // file or inflated document over its bound
        Malformed,          // not well-formed XML, or bad gzip data
        NotSvg,             // the root element is not <svg>
        TooManyElements,    // over kMaxElements
        TooDeep,            // nesting over kMaxDepth
        EntityDeclaration,  // DTD with entity declarations
        ExternalReference,  // href outside the document
        EmbeddedImage,      // data: picture that is ambiguous, SVG, damaged or too large
        UseExpansion,       // <use> expansion over the bounds, or a <use> cycle
    };

    // Reads `filePath` (inflating .svgz content) and checks it. On Ok, `document` holds the plain
    // SVG bytes to hand to QSvgRenderer::load(const QByteArray&).
    static Verdict ReadChecked(const QString& filePath, QByteArray& document);
    // Checks plain or gzip-compressed SVG bytes; on Ok, `document` holds the plain bytes.
    static Verdict Check(const QByteArray& bytes, QByteArray& document);
    static const char* VerdictName(Verdict verdict);
};
