// Value trees from untrusted text: parsing, every reader on every node, and reading each of the
// eight rich-text kinds (data items and snippets) from the tree, then writing them back. Nothing
// may throw (an exception aborts here) and nothing may be undefined (the sanitizers watch).

#include "FuzzApp.h"

#include <LxCore/ProtoValue.h>
#include <LxUIKit/RichText/LxRichTextDataEmoji.h>
#include <LxUIKit/RichText/LxRichTextDataEmotion.h>
#include <LxUIKit/RichText/LxRichTextDataImage.h>
#include <LxUIKit/RichText/LxRichTextDataLink.h>
#include <LxUIKit/RichText/LxRichTextDataPortfolio.h>
#include <LxUIKit/RichText/LxRichTextDataStock.h>
#include <LxUIKit/RichText/LxRichTextDataText.h>
#include <LxUIKit/RichText/LxRichTextDataUser.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoji.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoticon.h>
#include <LxUIKit/RichText/LxRichTextSnippetImage.h>
#include <LxUIKit/RichText/LxRichTextSnippetLink.h>
#include <LxUIKit/RichText/LxRichTextSnippetPortfolio.h>
#include <LxUIKit/RichText/LxRichTextSnippetStock.h>
#include <LxUIKit/RichText/LxRichTextSnippetText.h>
#include <LxUIKit/RichText/LxRichTextSnippetUser.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>

namespace {

// Every reader on this node, then on each member and element, depth-bounded by the parser.
void ReadAll(const core::CProtoValue& v, int depth) {
    // Unsigned sums: the readers' answers are kept alive without overflowing here.
    volatile uint64_t sink = 0;
    sink = sink + uint64_t(v.asInt32()) + uint64_t(v.asInt64()) + v.asUInt32() + v.asUInt64();
    sink = sink + (v.asBool() ? 1 : 0) + uint64_t(v.asDouble() == 0.0) + v.asString().size();
    (void)v.isNull();
    (void)v.toJsonString();
    if (depth > 64)
        return;
    const Json::Value& j = v.json();
    if (j.isObject()) {
        for (const std::string& key : j.getMemberNames()) {
            (void)v.isMember(key.c_str());
            ReadAll(v[key.c_str()], depth + 1);
        }
    } else if (j.isArray()) {
        for (Json::ArrayIndex i = 0; i < j.size(); ++i)
            ReadAll(core::CProtoValue(j[i]), depth + 1);
    }
}

// Reads the kind from the value and writes it back; pictures are not sized (that opens files).
void Exercise(ILxRichTextData& item, const core::CProtoValue& v, bool bPicture) {
    if (!item.FromProtoValue(v)) {
        std::fprintf(stderr, "fuzz_proto_value: FromProtoValue answered false\n");
        std::abort();
    }
    (void)item.ToProtoValue().toJsonString();
    (void)item.ToPlainText();
    if (!bPicture)
        (void)item.ToHtml();
}

void Run(const std::string& text) {
    core::CProtoValue v;
    (void)v.fromJsonString(text);
    ReadAll(v, 0);

    CLxRichTextDataText text1;
    CLxRichTextDataImage image2;
    CLxRichTextDataUser user3;
    CLxRichTextDataStock stock4;
    CLxRichTextDataPortfolio portfolio5;
    CLxRichTextDataEmotion emotion6;
    CLxRichTextDataLink link7;
    CLxRichTextDataEmoji emoji8;
    Exercise(text1, v, false);
    Exercise(image2, v, true);
    Exercise(user3, v, false);
    Exercise(stock4, v, false);
    Exercise(portfolio5, v, false);
    Exercise(emotion6, v, false);
    Exercise(link7, v, false);
    Exercise(emoji8, v, true);

    static const auto s_spConfig = std::make_shared<LxRichTextConfig>();
    CLxRichTextSnippetText sText;
    CLxRichTextSnippetImage sImage;
    CLxRichTextSnippetUser sUser;
    CLxRichTextSnippetStock sStock;
    CLxRichTextSnippetPortfolio sPortfolio;
    CLxRichTextSnippetEmoticon sEmotion;
    CLxRichTextSnippetLink sLink;
    CLxRichTextSnippetEmoji sEmoji;
    Exercise(sText, v, false);
    Exercise(sImage, v, true);
    Exercise(sUser, v, false);
    Exercise(sStock, v, false);
    Exercise(sPortfolio, v, false);
    Exercise(sEmotion, v, false);
    Exercise(sLink, v, false);
    Exercise(sEmoji, v, true);
    for (CLxRichTextSnippetBase* s :
         {static_cast<CLxRichTextSnippetBase*>(&sText), static_cast<CLxRichTextSnippetBase*>(&sUser),
          static_cast<CLxRichTextSnippetBase*>(&sStock), static_cast<CLxRichTextSnippetBase*>(&sPortfolio),
          static_cast<CLxRichTextSnippetBase*>(&sEmotion), static_cast<CLxRichTextSnippetBase*>(&sLink),
          static_cast<CLxRichTextSnippetBase*>(&sEmoji)})
        s->CreatHtml(3, s_spConfig);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lx_fuzz::App();
    try {
        Run(std::string(reinterpret_cast<const char*>(data), size));
    } catch (const std::exception& e) {
        std::fprintf(stderr, "fuzz_proto_value: exception: %s\n", e.what());
        std::abort();
    } catch (...) {
        std::fprintf(stderr, "fuzz_proto_value: unknown exception\n");
        std::abort();
    }
    return 0;
}
