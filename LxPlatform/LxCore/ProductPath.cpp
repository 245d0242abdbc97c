#include <LxCore/ProductPath.h>

#include <QDir>
#include <QMutex>
#include <QStandardPaths>

namespace core {
namespace product_path {
namespace {
QMutex g_mutex;
QString g_strRootOverride;

QString Ensure(const QString& path) {
    QDir().mkpath(path);
    return path;
}
}  // namespace

QString GetRootDir() {
    {
        QMutexLocker lock(&g_mutex);
        if (!g_strRootOverride.isEmpty())
            return g_strRootOverride;
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
    QMutexLocker lock(&g_mutex);
    g_strRootOverride = root.isEmpty() ? QString() : QDir::cleanPath(root);
}

QString GetCommonDir() { return Ensure(GetRootDir() + QStringLiteral("/common")); }
QString GetLogDir() { return Ensure(GetRootDir() + QStringLiteral("/log")); }
QString GetCacheDir() { return Ensure(GetRootDir() + QStringLiteral("/cache")); }
QString GetSettingsDir() { return Ensure(GetRootDir() + QStringLiteral("/settings")); }
QString GetSettingsFile() { return GetSettingsDir() + QStringLiteral("/settings.ini"); }

}  // namespace product_path
}  // namespace core
