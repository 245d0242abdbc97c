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
    <name>DevToolsPage</name>
    <message>
        <source>Developer tools</source>
        <translation>Developer tools</translation>
    </message>
    <message>
        <source>Press Ctrl+F9 anywhere in the gallery to open the developer tools window: every log record of every thread, live, coloured and filtered. Ctrl+F10 opens the widget inspector.</source>
        <translation>Press Ctrl+F9 anywhere in the gallery to open the developer tools window: every log record of every thread, live, coloured and filtered. Ctrl+F10 opens the widget inspector.</translation>
    </message>
    <message>
        <source>This build has no developer tools.</source>
        <translation>This build has no developer tools.</translation>
    </message>
    <message>
        <source> records/s</source>
        <translation> records/s</translation>
    </message>
    <message>
        <source>Start logging</source>
        <translation>Start logging</translation>
    </message>
    <message>
        <source>Threads</source>
        <translation>Threads</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Rate</translation>
    </message>
    <message>
        <source>Stop logging</source>
        <translation>Stop logging</translation>
    </message>
    <message>
        <source>%1 records written</source>
        <translation>%1 records written</translation>
    </message>
    <message>
        <source>Open the log viewer</source>
        <translation>Open the log viewer</translation>
    </message>
    <message>
        <source>Open an application-modal dialog</source>
        <translation>Open an application-modal dialog</translation>
    </message>
    <message>
        <source>Show a stray parentless widget</source>
        <translation>Show a stray parentless widget</translation>
    </message>
    <message>
        <source>Add a tab to the tools window</source>
        <translation>Add a tab to the tools window</translation>
    </message>
    <message>
        <source>Application-modal dialog</source>
        <translation>Application-modal dialog</translation>
    </message>
    <message>
        <source>The gallery is blocked now; the developer tools window still takes clicks and keys.</source>
        <translation>The gallery is blocked now; the developer tools window still takes clicks and keys.</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>A modal dialog is open: try the tools window.</source>
        <translation>A modal dialog is open: try the tools window.</translation>
    </message>
    <message>
        <source>stray</source>
        <translation>stray</translation>
    </message>
    <message>
        <source>A stray QLabel was shown: the log has a &quot;suspected unexpected popup&quot; line.</source>
        <translation>A stray QLabel was shown: the log has a &quot;suspected unexpected popup&quot; line.</translation>
    </message>
    <message>
        <source>Gallery %1</source>
        <translation>Gallery %1</translation>
    </message>
    <message>
        <source>Tab %1 added by the gallery.</source>
        <translation>Tab %1 added by the gallery.</translation>
    </message>
    <message>
        <source>Tab &quot;Gallery %1&quot; added to the tools window.</source>
        <translation>Tab &quot;Gallery %1&quot; added to the tools window.</translation>
    </message>
</context>
<context>
    <name>DiagnosticsPage</name>
    <message>
        <source>Full story</source>
        <translation>Full story</translation>
    </message>
    <message>
        <source>Related quotes</source>
        <translation>Related quotes</translation>
    </message>
    <message>
        <source>Comment %1</source>
        <translation>Comment %1</translation>
    </message>
    <message>
        <source>Diagnostics</source>
        <translation>Diagnostics</translation>
    </message>
    <message>
        <source>Price ticker</source>
        <translation>Price ticker</translation>
    </message>
    <message>
        <source>FPS: measuring…</source>
        <translation>FPS: measuring…</translation>
    </message>
    <message>
        <source>FPS: %1 now, %2 average, %3 peak</source>
        <translation>FPS: %1 now, %2 average, %3 peak</translation>
    </message>
    <message>
        <source>Open FPS monitor</source>
        <translation>Open FPS monitor</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>Card</translation>
    </message>
    <message>
        <source>Average ms</source>
        <translation>Average ms</translation>
    </message>
    <message>
        <source>Widgets made</source>
        <translation>Widgets made</translation>
    </message>
    <message>
        <source>Widgets visible</source>
        <translation>Widgets visible</translation>
    </message>
    <message>
        <source>Open timing window</source>
        <translation>Open timing window</translation>
    </message>
    <message>
        <source>Cards</source>
        <translation>Cards</translation>
    </message>
    <message>
        <source>Unit tests</source>
        <translation>Unit tests</translation>
    </message>
    <message>
        <source>Objects</source>
        <translation>Objects</translation>
    </message>
</context>
<context>
    <name>FlyoutsPage</name>
    <message>
        <source>Price alerts</source>
        <translation>Price alerts</translation>
    </message>
    <message>
        <source>%1: panel %2, hidden by the application: %3</source>
        <translation>%1: panel %2, hidden by the application: %3</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>hidden</translation>
    </message>
    <message>
        <source>shown</source>
        <translation>shown</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>yes</translation>
    </message>
    <message>
        <source>no</source>
        <translation>no</translation>
    </message>
    <message>
        <source>Flyouts</source>
        <translation>Flyouts</translation>
    </message>
    <message>
        <source>The panel follows the main window: it hides with it and comes back with it, unless you had hidden it yourself.</source>
        <translation>The panel follows the main window: it hides with it and comes back with it, unless you had hidden it yourself.</translation>
    </message>
    <message>
        <source>Open panel</source>
        <translation>Open panel</translation>
    </message>
    <message>
        <source>Hide panel</source>
        <translation>Hide panel</translation>
    </message>
    <message>
        <source>Main window hidden</source>
        <translation>Main window hidden</translation>
    </message>
    <message>
        <source>Main window restored</source>
        <translation>Main window restored</translation>
    </message>
    <message>
        <source>Application exiting</source>
        <translation>Application exiting</translation>
    </message>
    <message>
        <source>Follow the main window</source>
        <translation>Follow the main window</translation>
    </message>
    <message>
        <source>LNTF  Lanternfish Robotics</source>
        <translation>LNTF  Lanternfish Robotics</translation>
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
        <source>Developer tools</source>
        <translation>Developer tools</translation>
    </message>
    <message>
        <source>Diagnostics</source>
        <translation>Diagnostics</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Inspector</translation>
    </message>
    <message>
        <source>Layouts</source>
        <translation>Layouts</translation>
    </message>
    <message>
        <source>Slideshow</source>
        <translation>Slideshow</translation>
    </message>
    <message>
        <source>Flyouts</source>
        <translation>Flyouts</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Settings</translation>
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
    <name>InspectorPage</name>
    <message>
        <source>Nested panels: pick the button, then turn the wheel in Figma mode (F2).</source>
        <translation>Nested panels: pick the button, then turn the wheel in Figma mode (F2).</translation>
    </message>
    <message>
        <source>Place order</source>
        <translation>Place order</translation>
    </message>
    <message>
        <source>Open the inspector (Ctrl+F10)</source>
        <translation>Open the inspector (Ctrl+F10)</translation>
    </message>
    <message>
        <source>Order menu</source>
        <translation>Order menu</translation>
    </message>
    <message>
        <source>Buy</source>
        <translation>Buy</translation>
    </message>
    <message>
        <source>Sell</source>
        <translation>Sell</translation>
    </message>
    <message>
        <source>Cancel all</source>
        <translation>Cancel all</translation>
    </message>
    <message>
        <source>Watchlist</source>
        <translation>Watchlist</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Alerts</translation>
    </message>
    <message>
        <source>News</source>
        <translation>News</translation>
    </message>
    <message>
        <source>Ticker</source>
        <translation>Ticker</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>Last</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Change</translation>
    </message>
    <message>
        <source>Portfolios</source>
        <translation>Portfolios</translation>
    </message>
    <message>
        <source>Growth</source>
        <translation>Growth</translation>
    </message>
    <message>
        <source>Income</source>
        <translation>Income</translation>
    </message>
    <message>
        <source>Northwind Tools</source>
        <translation>Northwind Tools</translation>
    </message>
    <message>
        <source>Bluepeak Energy</source>
        <translation>Bluepeak Energy</translation>
    </message>
    <message>
        <source>Orchard Robotics</source>
        <translation>Orchard Robotics</translation>
    </message>
    <message>
        <source>Kestrel Labs</source>
        <translation>Kestrel Labs</translation>
    </message>
</context>
<context>
    <name>LayoutPage</name>
    <message>
        <source>Anchor layout</source>
        <translation>Anchor layout</translation>
    </message>
    <message>
        <source>Each block is placed by the text in its &quot;AnchorLayout&quot; property. Pick a block, edit its flags, or build flags below and apply them.</source>
        <translation>Each block is placed by the text in its &quot;AnchorLayout&quot; property. Pick a block, edit its flags, or build flags below and apply them.</translation>
    </message>
    <message>
        <source>Flags of the selected block</source>
        <translation>Flags of the selected block</translation>
    </message>
    <message>
        <source>Flag builder</source>
        <translation>Flag builder</translation>
    </message>
    <message>
        <source>Align to parent</source>
        <translation>Align to parent</translation>
    </message>
    <message>
        <source>Align to previous</source>
        <translation>Align to previous</translation>
    </message>
    <message>
        <source>Margin</source>
        <translation>Margin</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Apply to block</source>
        <translation>Apply to block</translation>
    </message>
    <message>
        <source>Banner</source>
        <translation>Banner</translation>
    </message>
    <message>
        <source>Badge</source>
        <translation>Badge</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>Card</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>Footer</source>
        <translation>Footer</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Top</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Bottom</translation>
    </message>
    <message>
        <source>Centre</source>
        <translation>Centre</translation>
    </message>
    <message>
        <source>Horizontal centre</source>
        <translation>Horizontal centre</translation>
    </message>
    <message>
        <source>Vertical centre</source>
        <translation>Vertical centre</translation>
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
    <name>SettingsPage</name>
    <message>
        <source>Notifications</source>
        <translation>Notifications</translation>
    </message>
    <message>
        <source>Restore defaults</source>
        <translation>Restore defaults</translation>
    </message>
    <message>
        <source>Price alerts</source>
        <translation>Price alerts</translation>
    </message>
    <message>
        <source>Play a sound</source>
        <translation>Play a sound</translation>
    </message>
    <message>
        <source>Show a badge</source>
        <translation>Show a badge</translation>
    </message>
    <message>
        <source>Quote colours</source>
        <translation>Quote colours</translation>
    </message>
    <message>
        <source>Red for rises</source>
        <translation>Red for rises</translation>
    </message>
    <message>
        <source>Green for rises</source>
        <translation>Green for rises</translation>
    </message>
    <message>
        <source>Account</source>
        <translation>Account</translation>
    </message>
    <message>
        <source>Linked brokerage account</source>
        <translation>Linked brokerage account</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Change</translation>
    </message>
    <message>
        <source>Downloaded pictures and charts are kept on this computer and removed after thirty days without use.</source>
        <translation>Downloaded pictures and charts are kept on this computer and removed after thirty days without use.</translation>
    </message>
    <message>
        <source>Privacy settings</source>
        <translation>Privacy settings</translation>
    </message>
    <message>
        <source>Trading</source>
        <translation>Trading</translation>
    </message>
    <message>
        <source>Nickname</source>
        <translation>Nickname</translation>
    </message>
    <message>
        <source>Chime</source>
        <translation>Chime</translation>
    </message>
    <message>
        <source>Bell</source>
        <translation>Bell</translation>
    </message>
    <message>
        <source>None</source>
        <translation>None</translation>
    </message>
    <message>
        <source>Order fill sound</source>
        <translation>Order fill sound</translation>
    </message>
    <message>
        <source>5 minutes before the open</source>
        <translation>5 minutes before the open</translation>
    </message>
    <message>
        <source>At the open</source>
        <translation>At the open</translation>
    </message>
    <message>
        <source>Reminder</source>
        <translation>Reminder</translation>
    </message>
    <message>
        <source>Harborline Securities ••••7781</source>
        <translation>Harborline Securities ••••7781</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
</context>
<context>
    <name>SlideshowPage</name>
    <message>
        <source>Slideshow</source>
        <translation>Slideshow</translation>
    </message>
    <message>
        <source>Native slides and web slides; the last web slide points to a missing file and stays hidden after its retries. Drag or click the dots to page.</source>
        <translation>Native slides and web slides; the last web slide points to a missing file and stays hidden after its retries. Drag or click the dots to page.</translation>
    </message>
    <message>
        <source>Add the web slides again</source>
        <translation>Add the web slides again</translation>
    </message>
    <message>
        <source>Spring research week: five sectors in five days</source>
        <translation>Spring research week: five sectors in five days</translation>
    </message>
    <message>
        <source>Zero-fee transfers until the end of the month</source>
        <translation>Zero-fee transfers until the end of the month</translation>
    </message>
    <message>
        <source>Quarterly outlook webinar</source>
        <translation>Quarterly outlook webinar</translation>
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
