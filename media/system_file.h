// media/system_file.h — files as the system has them, where systems differ.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace media {

// Each gives 0 or a positive value on success, and a negative one with errno set otherwise.

/// Makes a new file to write and read; there must be none. A descriptor.
int makeFile(const std::filesystem::path& path) noexcept;
/// An existing folder, for markInUse().
int openFolder(const std::filesystem::path& path) noexcept;
/// An existing file, to read.
int openFile(const std::filesystem::path& path) noexcept;
/// Bytes read; 0 at the end.
std::int64_t readSome(int descriptor, void* data, std::size_t size) noexcept;
/// Bytes written, which may be fewer than asked.
std::int64_t writeSome(int descriptor, const void* data, std::size_t size) noexcept;
std::int64_t seekFile(int descriptor, std::int64_t offset, int whence) noexcept;
/// Returns when the bytes are on the disk.
int syncFile(int descriptor) noexcept;
int closeFile(int descriptor) noexcept;
void removeFile(const std::filesystem::path& path) noexcept;
/// Gives the file another name, in place of a file that has it only if `overwrite`; else EEXIST.
int renameFile(const std::filesystem::path& from, const std::filesystem::path& to,
               bool overwrite) noexcept;
/// Whether files may be made in a folder.
int mayWriteTo(const std::filesystem::path& folder) noexcept;

/// Locks an open temporary file or folder for as long as the descriptor is open. False when
/// somebody removed it first. File systems without locks: nothing happens, and nothing of theirs is
/// removed.
bool markInUse(int descriptor) noexcept;

/// Whether nobody has marked a file or folder; false if that cannot be told.
bool isAbandoned(const std::filesystem::path& path) noexcept;

/// True for the error numbers of a full disk, quota or size limit.
bool isDiskFull(int code) noexcept;
int processId() noexcept;

}  // namespace media
