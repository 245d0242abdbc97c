// Answers of the image translation service from untrusted bytes: the answer checks, then the
// composing of whatever records survive onto a small picture. Nothing may throw (an exception
// aborts here) and nothing may be undefined (the sanitizers watch).

#include "FuzzApp.h"

#include <LxUIKit/ImagePreview/LxImagePreviewTranslateTask.h>
#include <LxUIKit/ImagePreview/LxImagePreviewTranslateTask_p.h>

#include <QPixmap>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

void Run(const QByteArray& body) {
    QString language;
    QVector<ImageRecord> records;
    const int status = lxuikit_translate::ParseTranslateHttpBody(body, language, records);
    if (status < 0 || status > 2 || (status == 0) != !records.isEmpty()) {
        std::fprintf(stderr, "fuzz_translate_answer: status %d with %d records\n", status, int(records.size()));
        std::abort();
    }
    (void)CLxImagePreviewTranslateTask::NormalizeTargetLanguage(language);
    if (records.size() > 64)
        records.resize(64);  // each record costs a text layout; the checks above saw them all
    static const QPixmap s_source = [] {
        QPixmap p(64, 48);
        p.fill(Qt::darkCyan);
        return p;
    }();
    const QPixmap out = CLxImagePreviewTranslateTask::ComposeTranslatedPixmap(s_source, records);
    if (out.size() != s_source.size()) {
        std::fprintf(stderr, "fuzz_translate_answer: composed picture changed size\n");
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lx_fuzz::App();
    try {
        Run(QByteArray(reinterpret_cast<const char*>(data), int(size)));
    } catch (const std::exception& e) {
        std::fprintf(stderr, "fuzz_translate_answer: exception: %s\n", e.what());
        std::abort();
    } catch (...) {
        std::fprintf(stderr, "fuzz_translate_answer: unknown exception\n");
        std::abort();
    }
    return 0;
}
