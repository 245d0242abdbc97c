#pragma once
// Start-up parameters handed to the core by the host before anything else runs. The kit fills the
// block (gui::GetCoreInitParamVeryFirst); the core keeps it so lower layers can pack and unpack
// archives and report page-load failures without linking the kit.

#include <LxCore/LxCoreExport.h>
#include <QObject>
#include <QString>

#include <functional>
#include <vector>

namespace core {

struct LXCORE_EXPORT CoreInitParam {
    std::function<bool(const QString& zipPath, const QString& destDir)> fnExtractDir;
    std::function<bool(const QString& srcDir, const QString& zipPath)> fnCompressDir;
    std::function<bool(const std::vector<QString>& files, const QString& zipPath)> fnCompressFiles;
    std::function<void(const QString& url, QObject* parent)> fnLoadSchemeUrlFailed;
};

// Stores the block and registers its scheme-failure handler as the unknown-scheme callback.
LXCORE_EXPORT void InitCore(const CoreInitParam& param);
LXCORE_EXPORT const CoreInitParam& GetCoreInitParam();

namespace archive {
// Forward to the functions of the init block; false (with a log line) when none was given.
LXCORE_EXPORT bool ExtractDir(const QString& zipPath, const QString& destDir);
LXCORE_EXPORT bool CompressDir(const QString& srcDir, const QString& zipPath);
LXCORE_EXPORT bool CompressFiles(const std::vector<QString>& files, const QString& zipPath);
}  // namespace archive

}  // namespace core
