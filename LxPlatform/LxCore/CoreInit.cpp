#include <LxCore/CoreInit.h>

#include <LxCore/LxCoreLog_p.h>
#include <LxCore/Scheme.h>

namespace core {
namespace {
CoreInitParam& Param() {
    static CoreInitParam p;
    return p;
}
}  // namespace

void InitCore(const CoreInitParam& param) {
    Param() = param;
    scheme::RegisterUnknowSchemeCallBack(param.fnLoadSchemeUrlFailed);
    LXCORE_LOG_INFO("core initialised (archive functions: {}, scheme failure handler: {})",
                    param.fnExtractDir ? "yes" : "no", param.fnLoadSchemeUrlFailed ? "yes" : "no");
}

const CoreInitParam& GetCoreInitParam() { return Param(); }

namespace archive {
bool ExtractDir(const QString& zipPath, const QString& destDir) {
    if (!Param().fnExtractDir) {
        LXCORE_LOG_ERROR("no archive extractor installed; cannot extract {}", zipPath);
        return false;
    }
    return Param().fnExtractDir(zipPath, destDir);
}
bool CompressDir(const QString& srcDir, const QString& zipPath) {
    if (!Param().fnCompressDir) {
        LXCORE_LOG_ERROR("no archive compressor installed; cannot pack {}", srcDir);
        return false;
    }
    return Param().fnCompressDir(srcDir, zipPath);
}
bool CompressFiles(const std::vector<QString>& files, const QString& zipPath) {
    if (!Param().fnCompressFiles) {
        LXCORE_LOG_ERROR("no archive compressor installed; cannot write {}", zipPath);
        return false;
    }
    return Param().fnCompressFiles(files, zipPath);
}
}  // namespace archive

}  // namespace core
