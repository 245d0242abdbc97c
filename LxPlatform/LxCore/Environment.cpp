#include <LxCore/Environment.h>

#include <LxCore/StrConv.h>

#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>

#include <atomic>

namespace core {
namespace environment {
namespace {
std::atomic<bool> g_bInternational{false};
}

QString GetDeviceId() {
    static const QString s_id = [] {
        QByteArray machine = QSysInfo::machineUniqueId();
        if (machine.isEmpty()) {
            QFile f(QStringLiteral("/etc/machine-id"));
            if (f.open(QIODevice::ReadOnly))
                machine = f.readAll().trimmed();
        }
        if (machine.isEmpty())
            machine = QSysInfo::machineHostName().toUtf8();
        const uint64_t h = str_conv::HashStrToUInt64(std::string("lx-device:") + machine.toStdString());
        return QStringLiteral("%1").arg(h, 16, 16, QLatin1Char('0'));
    }();
    return s_id;
}

int GetClientType() {
#if defined(Q_OS_WIN)
    return 2;
#elif defined(Q_OS_MACOS)
    return 3;
#else
    return 1;
#endif
}

QString GetAppVersion() {
    const QString v = QCoreApplication::applicationVersion();
    return v.isEmpty() ? QStringLiteral("0.0.0") : v;
}

QString GetServerLanguage() {
    return lang::GetLanguageId() == lang::kLangEnUS ? QStringLiteral("en-US") : QStringLiteral("zh-CN");
}

bool IsInternationalEdition() { return g_bInternational.load(); }
void SetInternationalEdition(bool bInternational) { g_bInternational.store(bInternational); }

}  // namespace environment

namespace lang {
namespace {
std::atomic<int> g_i32Lang{kLangZhCN};
}

int GetLanguageId() { return g_i32Lang.load(); }

void SetLanguageId(int i32LangId) {
    if (i32LangId != kLangZhCN && i32LangId != kLangEnUS)
        i32LangId = kLangZhCN;
    if (g_i32Lang.exchange(i32LangId) != i32LangId)
        Q_EMIT Notifier::instance()->languageChanged(i32LangId);
}

QString GetLanguageCode() { return GetLanguageId() == kLangEnUS ? QStringLiteral("en_US") : QStringLiteral("zh_CN"); }

Notifier* Notifier::instance() {
    static Notifier* s = new Notifier;  // lives for the process; signals may fire during teardown
    return s;
}

}  // namespace lang
}  // namespace core
