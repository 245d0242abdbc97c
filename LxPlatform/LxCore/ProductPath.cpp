#include <LxCore/ProductPath.h>

#include <QDir>
#include <QStandardPaths>

#include <mutex>

namespace core {
namespace product_path {
namespace {
// The root set by SetRootDir(), made on first use so loading the library runs no constructor.
struct RootOverride {
    std::mutex mutex;  // guards strRoot: any thread may ask for a folder
    QString strRoot;
};
RootOverride& Override() {
    static RootOverride s_override;
    return s_override;
}

QString Ensure(const QString& path) {
    QDir().mkpath(path);
    return path;
}
}  // namespace

QString GetRootDir() {
    {
        RootOverride& o = Override();
        std::lock_guard<std::mutex> lock(o.mutex);
        if (!o.strRoot.isEmpty())
            return o.strRoot;
    }
    const QString env = qEnvironmentVariable("LX_PRODUCT_ROOT");
    if (!env.isEmpty())
        return QDir::cleanPath(env);
    QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty())
        base = QDir::homePath() + QStringLiteral("/.local/share");
    return base + QStringLiteral("/LxClient");
}

void SetRootDir(const QString& root) {
    RootOverride& o = Override();
    std::lock_guard<std::mutex> lock(o.mutex);
    o.strRoot = root.isEmpty() ? QString() : QDir::cleanPath(root);
}

QString GetCommonDir() { return Ensure(GetRootDir() + QStringLiteral("/common")); }
QString GetLogDir() { return Ensure(GetRootDir() + QStringLiteral("/log")); }
QString GetCacheDir() { return Ensure(GetRootDir() + QStringLiteral("/cache")); }
QString GetSettingsDir() { return Ensure(GetRootDir() + QStringLiteral("/settings")); }
QString GetSettingsFile() { return GetSettingsDir() + QStringLiteral("/settings.ini"); }

}  // namespace product_path
}  // namespace core
