<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>gui_helper</name>
    <message>
        <source>Tip</source>
        <translation>Tip</translation>
    </message>
    <message>
        <source>The page failed to load</source>
        <translation>The page failed to load</translation>
    </message>
    <message>
        <source>Got it</source>
        <translation>Got it</translation>
    </message>
</context>
<context>
    <name>rich_text_data_image</name>
    <message>
        <source>[Image]</source>
        <translation>[Image]</translation>
    </message>
</context>
<context>
    <name>rich_text_data_emotion</name>
    <message>
        <source>[Emoticon]</source>
        <translation>[Emoticon]</translation>
    </message>
</context>
<context>
    <name>zip_helper</name>
    <message>
        <source>Archive written</source>
        <translation>Archive written</translation>
    </message>
    <message>
        <source>Archive failed</source>
        <translation>Archive failed</translation>
    </message>
</context>
<context>
    <name>common</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Loading</translation>
    </message>
    <message>
        <source>Failed to load</source>
        <translation>Failed to load</translation>
    </message>
</context>
<context>
    <name>image_preview</name>
    <message>
        <source>Copied</source>
        <translation>Copied</translation>
    </message>
    <message>
        <source>Copy failed</source>
        <translation>Copy failed</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>Translation failed: this picture format cannot be translated</source>
        <translation>Translation failed: this picture format cannot be translated</translation>
    </message>
    <message>
        <source>Translation failed, please try again</source>
        <translation>Translation failed, please try again</translation>
    </message>
    <message>
        <source>No translation result</source>
        <translation>No translation result</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>Previous</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>Translate</source>
        <translation>Translate</translation>
    </message>
    <message>
        <source>Show original</source>
        <translation>Show original</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Reload</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Zoom in</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Zoom out</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Picture</translation>
    </message>
</context>
</TS>
