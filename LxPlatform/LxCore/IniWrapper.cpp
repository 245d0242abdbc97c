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
    m_pSettings->setValue(Key(section, key), value);
    m_pSettings->sync();
    if (m_pSettings->status() != QSettings::NoError) {
        LXCORE_LOG_WARN("cannot write setting {} to {}", Key(section, key), GetFilePath());
        return false;
    }
    return true;
}

bool CIniWrapper::Remove(const QString& section, const QString& key) {
    m_pSettings->remove(Key(section, key));
    m_pSettings->sync();
    return m_pSettings->status() == QSettings::NoError;
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
