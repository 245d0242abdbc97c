#include <LxCore/IniWrapper.h>

#include <LxCore/LxCoreLog_p.h>
#include <LxCore/ProductPath.h>

namespace core {
namespace {
QString Key(const QString& section, const QString& key) {
    return section.isEmpty() ? key : section + QLatin1Char('/') + key;
}
}  // namespace

CIniWrapper::CIniWrapper(const QString& strFilePath)
    : m_pSettings(std::make_unique<QSettings>(strFilePath, QSettings::IniFormat)) {}

QString CIniWrapper::GetFilePath() const { return m_pSettings->fileName(); }

bool CIniWrapper::HasKey(const QString& section, const QString& key) const {
    return m_pSettings->contains(Key(section, key));
}

QVariant CIniWrapper::GetValue(const QString& section, const QString& key, const QVariant& def) const {
    return m_pSettings->value(Key(section, key), def);
}

QString CIniWrapper::GetString(const QString& section, const QString& key, const QString& def) const {
    return GetValue(section, key, def).toString();
}

int CIniWrapper::GetInt(const QString& section, const QString& key, int def) const {
    bool ok = false;
    const int v = GetValue(section, key, def).toInt(&ok);
    return ok ? v : def;
}

bool CIniWrapper::GetBool(const QString& section, const QString& key, bool def) const {
    const QVariant v = GetValue(section, key, def);
    const QString s = v.toString().trimmed().toLower();
    if (s == QLatin1String("true") || s == QLatin1String("1") || s == QLatin1String("yes"))
        return true;
    if (s == QLatin1String("false") || s == QLatin1String("0") || s == QLatin1String("no"))
        return false;
    return def;
}

bool CIniWrapper::SetValue(const QString& section, const QString& key, const QVariant& value) {
    const QString k = Key(section, key);
    return Write(
        k, [&](QSettings& settings) { settings.setValue(k, value); },
        "cannot write setting {} to {}; the file keeps its previous content");
}

bool CIniWrapper::Remove(const QString& section, const QString& key) {
    const QString k = Key(section, key);
    return Write(
        k, [&](QSettings& settings) { settings.remove(k); },
        "cannot remove setting {} from {}; the file keeps its previous content");
}

bool CIniWrapper::Write(const QString& key, const std::function<void(QSettings&)>& change, const char* failure) {
    // A QSettings keeps the first error it meets for good, so each write gets an object of its own
    // whose status tells about this write alone. All QSettings of a file share its content, so the
    // reading object sees the change at once. QSettings writes a new file beside the old one and
    // renames it over it only when complete: a failed write leaves the old file as it was.
    QSettings writer(GetFilePath(), QSettings::IniFormat);
    const bool bHad = writer.contains(key);
    const QVariant previous = writer.value(key);
    change(writer);
    writer.sync();
    if (writer.status() == QSettings::NoError)
        return true;
    LXCORE_LOG_WARN(failure, key, GetFilePath());
    // QSettings keeps a change it could not write, for every QSettings of the process on this file,
    // and writes it with the next change that succeeds. Undone here, so that a refused change is
    // neither read back nor saved later behind the caller's back.
    if (bHad)
        writer.setValue(key, previous);
    else
        writer.remove(key);
    return false;
}

namespace app_setting {
bool GetBool(const QString& key, bool def) {
    return CIniWrapper(product_path::GetSettingsFile()).GetBool(QStringLiteral("AppSettings"), key, def);
}
bool SetBool(const QString& key, bool value) {
    return CIniWrapper(product_path::GetSettingsFile()).SetValue(QStringLiteral("AppSettings"), key, value);
}
}  // namespace app_setting

}  // namespace core
