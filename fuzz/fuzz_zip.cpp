// Unpacking arbitrary bytes. Whatever an archive claims, extraction may fail but must never write
// outside its destination or create a symbolic link; either aborts the run.

#include <LxUIKit/Zip/LxZip.h>

#include <QByteArray>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

// Every path under `base` must be the archive itself, the destination or inside it, and none a link;
// no part file may outlive the call.
void CheckContainment(const QString& base, const QString& zipPath, const QString& dest) {
    QDirIterator it(base, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const bool inside = path == zipPath || path == dest || path.startsWith(dest + QLatin1Char('/')) ||
                            dest.startsWith(path + QLatin1Char('/'));  // the folders holding the destination
        if (!inside || QFileInfo(path).isSymLink() || it.fileName().startsWith(QLatin1String(".lxpart-"))) {
            std::fprintf(stderr, "containment broken: %s\n", qPrintable(path));
            std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const QString s_tmp = QDir::tempPath();
    QByteArray templ = QFile::encodeName(s_tmp + QStringLiteral("/fuzz-zip-XXXXXX"));
    if (!::mkdtemp(templ.data()))
        std::abort();
    const QString base = QFile::decodeName(templ);
    // The destination sits two levels down, so that an entry climbing out lands where it is seen.
    const QString zipPath = base + QStringLiteral("/in.zip");
    const QString dest = base + QStringLiteral("/a/b/dest");
    QFile zip(zipPath);
    if (!zip.open(QIODevice::WriteOnly) || zip.write(reinterpret_cast<const char*>(data), qint64(size)) != qint64(size))
        std::abort();
    zip.close();

    _zip::ExtractDir(zipPath, dest);
    CheckContainment(base, zipPath, dest);
    QDir(base).removeRecursively();
    return 0;
}
