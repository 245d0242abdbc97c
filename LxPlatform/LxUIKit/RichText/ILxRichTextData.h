#pragma once
// One item of a rich text: a plain text run or a token (image, user, stock, portfolio, emoticon,
// link, emoji). Every item converts itself to plain text (copying, accessibility), to a minimal
// HTML fragment and to a keyed value for storage and transport, and can be read back from one.
//
// The HTML of ToHtml() is the raw form: values go in as they are, unescaped. Widgets never show it
// directly; they use the snippets (LxRichTextSnippetBase.h), whose markup escapes user text.
//
// Item lists travel as std::vector<std::shared_ptr<ILxRichTextData>> (or of the snippet base).
// The interface has no virtual destructor: items are owned through shared pointers made for their
// concrete class, never deleted through this interface (the destructor is protected for that).

#include <LxCore/ProtoValue.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QString>

// Item kinds: the value of GetType() and of the key "type". 0 is not used.
enum LxRichTextDataType : int {
    LxRichTextDataType_Text = 1,
    LxRichTextDataType_Image = 2,
    LxRichTextDataType_User = 3,
    LxRichTextDataType_Stock = 4,
    LxRichTextDataType_Portfolio = 5,
    LxRichTextDataType_Emotion = 6,
    LxRichTextDataType_Link = 7,
    LxRichTextDataType_Emoji = 8,
};

class LXUIKIT_EXPORT ILxRichTextData {
public:
    virtual int GetType() const = 0;
    virtual QString ToHtml() = 0;
    virtual QString ToPlainText() = 0;
    virtual core::CProtoValue ToProtoValue() = 0;
    // Reads the keys ToProtoValue() writes (except "type"); missing keys read as empty or zero.
    // Always answers true.
    virtual bool FromProtoValue(const core::CProtoValue& value) = 0;

protected:
    ~ILxRichTextData() = default;
};
