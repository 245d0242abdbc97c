#include "GalleryDelegates.h"

#include <LxCore/FileSystem.h>
#include <LxCore/LxLog.h>
#include <LxCore/ProductPath.h>
#include <LxCore/TimeDate.h>
#include <LxUIKit/LUIKitReport.h>
#include <LxUIKit/LUIKitWebDelegate.h>
#include <LxUIKit/WebImage/LxHttpDownloadDelegate.h>

#include <json/writer.h>
#include <QDesktopServices>
#include <QUrl>

QString GalleryReportFilePath() { return core::product_path::GetLogDir() + QStringLiteral("/gallery_reports.jsonl"); }

void InstallGalleryDelegates() {
    lxuikit_report::setReportDelegate([](const std::string& event, int value, const Json::Value& params) {
        Json::Value line(Json::objectValue);
        line["time"] = Json::Int64(core::time_date::GetSvrTimeMillis());
        line["event"] = event;
        line["value"] = value;
        line["params"] = params;
        Json::StreamWriterBuilder b;
        b["indentation"] = "";
        const std::string text = Json::writeString(b, line) + "\n";
        return core::fs::AppendFile(GalleryReportFilePath(), QByteArray::fromStdString(text));
    });
    lxuikit_web::setShowWebViewDelegate([](const QString& url) {
        if (!QDesktopServices::openUrl(QUrl(url)))
            LX_LOG_WARN("Gallery", "the desktop has no browser for {}", url.toStdString());
    });
    // Web images download over HTTP into <cache>/webimage (file: URLs are read in place).
    ILxUIKitHttpDownloadMgr::setDelegate(new CLxHttpDownloadDelegate);
    lxuikit_web::setSetRemoteDebugPortDelegate(
        [](int port) { LX_LOG_INFO("Gallery", "remote debugging would listen on port {}", port); });
}
