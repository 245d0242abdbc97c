// The log viewer's common filter-word file ("CommonFilter.dat", a Qt data stream of a string
// list) from untrusted bytes: a damaged stream must give an empty list, a good one must write back
// to a stream that reads as the same list. Nothing may crash or allocate by a forged count.

#include "FuzzApp.h"

#include <LxUIKit/DevTools/Log/LogFilterDialog.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lx_fuzz::App();
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    QStringList words;
    if (!CLogFilterDialog::ParseFilterWords(bytes, &words)) {
        if (!words.isEmpty())
            abort();  // a damaged stream yields nothing
        return 0;
    }
    QStringList again;
    if (!CLogFilterDialog::ParseFilterWords(CLogFilterDialog::SerializeFilterWords(words), &again) || again != words)
        abort();
    return 0;
}
