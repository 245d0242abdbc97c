#pragma once
// Which file each URL's cached picture was made from. Many widgets showing one URL hear of one
// download at once (a feed's avatars): the first one decodes the file and fills the image cache,
// the others take the cache's entry as long as the file is the very one it came from: same path,
// size, modification and change times. A new download of the URL is a new file, so it is decoded
// again. Still pictures and movies are remembered apart. GUI thread only.

#include <QString>

#include <cstdint>

namespace lxuikit_image {

enum class CachedKind { Pixmap, Movie };

// The file's identity (path, size, times); empty when the file does not exist.
QString FileStamp(const QString& filePath);
// The cache's entry for url, told apart by `identity` (a pixmap's cache key, a movie's address),
// was made from the file stamped `stamp`. At most 4096 URLs are remembered per kind; past that
// the memory starts over (it only saves work).
void RememberDecoded(CachedKind kind, const QString& url, const QString& stamp, std::uintptr_t identity);
// True when the entry `identity` is the one remembered for url and `stamp` is not empty and is
// the file it was made from.
bool WasDecodedFrom(CachedKind kind, const QString& url, const QString& stamp, std::uintptr_t identity);

}  // namespace lxuikit_image
