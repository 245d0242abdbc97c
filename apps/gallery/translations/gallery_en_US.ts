<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>ArchivePage</name>
    <message>
        <source>Archive</source>
        <translation>Archive</translation>
    </message>
    <message>
        <source>Pack a folder (hidden files included, links left out) and unpack an archive. Unpacking refuses archives whose entries would leave the destination.</source>
        <translation>Pack a folder (hidden files included, links left out) and unpack an archive. Unpacking refuses archives whose entries would leave the destination.</translation>
    </message>
    <message>
        <source>Folder to pack</source>
        <translation>Folder to pack</translation>
    </message>
    <message>
        <source>Archive file</source>
        <translation>Archive file</translation>
    </message>
    <message>
        <source>Unpack into</source>
        <translation>Unpack into</translation>
    </message>
    <message>
        <source>Pack folder</source>
        <translation>Pack folder</translation>
    </message>
    <message>
        <source>Unpack archive</source>
        <translation>Unpack archive</translation>
    </message>
    <message>
        <source>Entries in the archive</source>
        <translation>Entries in the archive</translation>
    </message>
    <message>
        <source>Entry</source>
        <translation>Entry</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Mode</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Modified</translation>
    </message>
    <message>
        <source>Files written by unpacking</source>
        <translation>Files written by unpacking</translation>
    </message>
    <message>
        <source>File</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Packed %1 into %2</source>
        <translation>Packed %1 into %2</translation>
    </message>
    <message>
        <source>Packing failed; the log says why</source>
        <translation>Packing failed; the log says why</translation>
    </message>
    <message>
        <source>Unpacked into %1</source>
        <translation>Unpacked into %1</translation>
    </message>
    <message>
        <source>Unpacking refused or failed; the log says why</source>
        <translation>Unpacking refused or failed; the log says why</translation>
    </message>
    <message>
        <source>Browse…</source>
        <translation>Browse…</translation>
    </message>
    <message>
        <source>Zip archives (*.zip)</source>
        <translation>Zip archives (*.zip)</translation>
    </message>
    <message>
        <source>folder</source>
        <translation>folder</translation>
    </message>
</context>
<context>
    <name>GalleryPages</name>
    <message>
        <source>Toasts</source>
        <translation>Toasts</translation>
    </message>
    <message>
        <source>Lazy load</source>
        <translation>Lazy load</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archive</translation>
    </message>
    <message>
        <source>Rich text</source>
        <translation>Rich text</translation>
    </message>
    <message>
        <source>Web images</source>
        <translation>Web images</translation>
    </message>
    <message>
        <source>Image preview</source>
        <translation>Image preview</translation>
    </message>
</context>
<context>
    <name>GalleryWindow</name>
    <message>
        <source>LxUIKit Gallery</source>
        <translation>LxUIKit Gallery</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>Theme</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Light</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dark</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>Demo</source>
        <translation>Demo</translation>
    </message>
    <message>
        <source>Put the current page into its demonstration state</source>
        <translation>Put the current page into its demonstration state</translation>
    </message>
</context>
<context>
    <name>ImagePreviewPage</name>
    <message>
        <source>Poster with captions</source>
        <translation>Poster with captions</translation>
    </message>
    <message>
        <source>Tall chart with captions</source>
        <translation>Tall chart with captions</translation>
    </message>
    <message>
        <source>Animated GIF (never zoomed)</source>
        <translation>Animated GIF (never zoomed)</translation>
    </message>
    <message>
        <source>SVG</source>
        <translation>SVG</translation>
    </message>
    <message>
        <source>Photo, 6000 × 4000</source>
        <translation>Photo, 6000 × 4000</translation>
    </message>
    <message>
        <source>Broken JPEG</source>
        <translation>Broken JPEG</translation>
    </message>
    <message>
        <source>Image preview</source>
        <translation>Image preview</translation>
    </message>
    <message>
        <source>Double-click a picture to open it in the preview window. Zoom with the wheel or the title bar, drag a large picture, step with Left and Right, right-click to copy. The translate button sends the picture to the demonstration service.</source>
        <translation>Double-click a picture to open it in the preview window. Zoom with the wheel or the title bar, drag a large picture, step with Left and Right, right-click to copy. The translate button sends the picture to the demonstration service.</translation>
    </message>
    <message>
        <source>The demonstration translation service could not start.</source>
        <translation>The demonstration translation service could not start.</translation>
    </message>
    <message>
        <source>Demonstration translation service: %1</source>
        <translation>Demonstration translation service: %1</translation>
    </message>
    <message>
        <source>Open preview</source>
        <translation>Open preview</translation>
    </message>
    <message>
        <source>Open and translate</source>
        <translation>Open and translate</translation>
    </message>
</context>
<context>
    <name>LazyLoadPage</name>
    <message>
        <source>content created for %1 of %2 rows</source>
        <translation>content created for %1 of %2 rows</translation>
    </message>
    <message>
        <source>Row %1 — built lazily</source>
        <translation>Row %1 — built lazily</translation>
    </message>
    <message>
        <source>Lazy load</source>
        <translation>Lazy load</translation>
    </message>
    <message>
        <source>Each list holds %1 containers. Scroll the right list and watch its counter: content is made only when a row is painted.</source>
        <translation>Each list holds %1 containers. Scroll the right list and watch its counter: content is made only when a row is painted.</translation>
    </message>
    <message>
        <source>Create on show</source>
        <translation>Create on show</translation>
    </message>
    <message>
        <source>Create on paint</source>
        <translation>Create on paint</translation>
    </message>
</context>
<context>
    <name>RichTextPage</name>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>User</source>
        <translation>User</translation>
    </message>
    <message>
        <source>Stock</source>
        <translation>Stock</translation>
    </message>
    <message>
        <source>Portfolio</source>
        <translation>Portfolio</translation>
    </message>
    <message>
        <source>Emoticon</source>
        <translation>Emoticon</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>Link</translation>
    </message>
    <message>
        <source>Emoji</source>
        <translation>Emoji</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>Token</translation>
    </message>
    <message>
        <source>%1 · id %2 · %3</source>
        <translation>%1 · id %2 · %3</translation>
    </message>
    <message>
        <source>Collapse</source>
        <translation>Collapse</translation>
    </message>
    <message>
        <source>Expand</source>
        <translation>Expand</translation>
    </message>
    <message>
        <source>Rich text</source>
        <translation>Rich text</translation>
    </message>
    <message>
        <source>%1 posts with stocks, portfolios, mentions, links, pictures, emoji and emoticons, each cut at %2 lines. Click a token for a toast, hover one to see it below, select text and copy it with Ctrl+C. Rows are built when first painted.</source>
        <translation>%1 posts with stocks, portfolios, mentions, links, pictures, emoji and emoticons, each cut at %2 lines. Click a token for a toast, hover one to see it below, select text and copy it with Ctrl+C. Rows are built when first painted.</translation>
    </message>
    <message>
        <source>Hovering: %1</source>
        <translation>Hovering: %1</translation>
    </message>
    <message>
        <source>Hover a token to see it here.</source>
        <translation>Hover a token to see it here.</translation>
    </message>
    <message>
        <source>posts built: %1 of %2</source>
        <translation>posts built: %1 of %2</translation>
    </message>
</context>
<context>
    <name>ToastPage</name>
    <message>
        <source>Success</source>
        <translation>Success</translation>
    </message>
    <message>
        <source>Failure</source>
        <translation>Failure</translation>
    </message>
    <message>
        <source>Neutral</source>
        <translation>Neutral</translation>
    </message>
    <message>
        <source>Toasts</source>
        <translation>Toasts</translation>
    </message>
    <message>
        <source>A toast shows a short message over everything and deletes itself. Up to one second it appears below the middle of the screen; longer toasts slide up from the bottom edge.</source>
        <translation>A toast shows a short message over everything and deletes itself. Up to one second it appears below the middle of the screen; longer toasts slide up from the bottom edge.</translation>
    </message>
    <message>
        <source>Order placed: 100 shares</source>
        <translation>Order placed: 100 shares</translation>
    </message>
    <message>
        <source>Toast text</source>
        <translation>Toast text</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>%1  %2, %3 ms: %4</source>
        <translation>%1  %2, %3 ms: %4</translation>
    </message>
    <message>
        <source>Open %1 (no handler)</source>
        <translation>Open %1 (no handler)</translation>
    </message>
    <message>
        <source>Shown</source>
        <translation>Shown</translation>
    </message>
</context>
<context>
    <name>WebImagesPage</name>
    <message>
        <source>JPEG · rounded 12</source>
        <translation>JPEG · rounded 12</translation>
    </message>
    <message>
        <source>same URL · 1:1 crop, circle, border</source>
        <translation>same URL · 1:1 crop, circle, border</translation>
    </message>
    <message>
        <source>PNG · natural size × 0.75</source>
        <translation>PNG · natural size × 0.75</translation>
    </message>
    <message>
        <source>PNG · top corners, border</source>
        <translation>PNG · top corners, border</translation>
    </message>
    <message>
        <source>WebP still · top half</source>
        <translation>WebP still · top half</translation>
    </message>
    <message>
        <source>GIF · animated</source>
        <translation>GIF · animated</translation>
    </message>
    <message>
        <source>WebP · animated, round</source>
        <translation>WebP · animated, round</translation>
    </message>
    <message>
        <source>same GIF URL · shared movie</source>
        <translation>same GIF URL · shared movie</translation>
    </message>
    <message>
        <source>SVG · stretched</source>
        <translation>SVG · stretched</translation>
    </message>
    <message>
        <source>SVGZ · natural size</source>
        <translation>SVGZ · natural size</translation>
    </message>
    <message>
        <source>GIF named .png</source>
        <translation>GIF named .png</translation>
    </message>
    <message>
        <source>missing file</source>
        <translation>missing file</translation>
    </message>
    <message>
        <source>truncated JPEG</source>
        <translation>truncated JPEG</translation>
    </message>
    <message>
        <source>HTML named .svg</source>
        <translation>HTML named .svg</translation>
    </message>
    <message>
        <source>Web images</source>
        <translation>Web images</translation>
    </message>
    <message>
        <source>Every picture below is fetched through the download delegate, decoded once into the shared image cache and shown with its own corners, crop, border and scale. Failing pictures retry twice through the reload helper, then show the failure placeholder. Switch the theme to see the placeholders follow it.</source>
        <translation>Every picture below is fetched through the download delegate, decoded once into the shared image cache and shown with its own corners, crop, border and scale. Failing pictures retry twice through the reload helper, then show the failure placeholder. Switch the theme to see the placeholders follow it.</translation>
    </message>
    <message>
        <source>Reload all</source>
        <translation>Reload all</translation>
    </message>
    <message>
        <source>Clear cache</source>
        <translation>Clear cache</translation>
    </message>
    <message>
        <source>Load any picture: https://…, file:///…, or a local path</source>
        <translation>Load any picture: https://…, file:///…, or a local path</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>Load</translation>
    </message>
    <message>
        <source>Type an address and press Load.</source>
        <translation>Type an address and press Load.</translation>
    </message>
    <message>
        <source>loading…</source>
        <translation>loading…</translation>
    </message>
    <message>
        <source>Loading %1 …</source>
        <translation>Loading %1 …</translation>
    </message>
    <message>
        <source>cache emptied (%1 pictures, %2 movies, %3 SVG)</source>
        <translation>cache emptied (%1 pictures, %2 movies, %3 SVG)</translation>
    </message>
    <message>
        <source> · from cache</source>
        <translation> · from cache</translation>
    </message>
    <message>
        <source>%1, retry %2 of %3…</source>
        <translation>%1, retry %2 of %3…</translation>
    </message>
    <message>
        <source>download failed</source>
        <translation>download failed</translation>
    </message>
    <message>
        <source>cannot decode</source>
        <translation>cannot decode</translation>
    </message>
    <message>
        <source>failed after %1 attempts, placeholder shown</source>
        <translation>failed after %1 attempts, placeholder shown</translation>
    </message>
    <message>
        <source>Failed after %1 attempts: %2</source>
        <translation>Failed after %1 attempts: %2</translation>
    </message>
    <message>
        <source>still picture</source>
        <translation>still picture</translation>
    </message>
    <message>
        <source>SVG</source>
        <translation>SVG</translation>
    </message>
    <message>
        <source>animation</source>
        <translation>animation</translation>
    </message>
    <message>
        <source>, from the cache</source>
        <translation>, from the cache</translation>
    </message>
    <message>
        <source>no download delegate installed</source>
        <translation>no download delegate installed</translation>
    </message>
    <message>
        <source>Downloads asked: %1 (network %2, already on disk %3, local files %4)</source>
        <translation>Downloads asked: %1 (network %2, already on disk %3, local files %4)</translation>
    </message>
    <message>
        <source>%1 · Cache hits: %2 · Failures: %3
In the cache: %4 pictures, %5 movies, %6 SVG, %7 MiB%8</source>
        <translation>%1 · Cache hits: %2 · Failures: %3
In the cache: %4 pictures, %5 movies, %6 SVG, %7 MiB%8</translation>
    </message>
</context>
</TS>
