// Files. Every routine that reads or writes a data file comes through here: one place that decides
// the access, tells the user when an open fails, finds a file whatever the case of its name, and
// replaces a file only by a whole new one.
//
// A path that is empty or holds a NUL names no file: each routine here answers as to a file that
// isn't there, with the error "Bad file name or number" where it tells one.
//
// Paths are text with "\" (or "/") between folders, as the program has always kept them; they turn
// into the platform's form in NativePath alone.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "surface/values.h"
#include "text/bytes.h"
#include "text/run_time_error.h"

namespace orvantis {

/// 1 or above; 0 is no file.
using FileHandle = std::int16_t;

namespace open_mode {
inline constexpr std::int16_t kWriteText = 1;   ///< write in place, emptying the file first
inline constexpr std::int16_t kReadText = 2;    ///< read
inline constexpr std::int16_t kAppendText = 3;  ///< write at the end
inline constexpr std::int16_t kRecords = 4;     ///< fixed records, read and write
inline constexpr std::int16_t kBinary = 5;      ///< bytes, read and write
}  // namespace open_mode

/// Opens a file. Modes kRecords and kBinary open an existing file, for reading alone where it may
/// not be written; they make no new one, since files are made whole by ReplaceFile.
/// `recordLength` (bytes) is the caller's unit in mode kRecords and isn't kept: positions are bytes
/// in every mode. With `clearReadOnly` set, a read-only file is first made writable and stays so.
/// Mode kWriteText has emptied the file before the first byte is written, so that a failure loses
/// what was there: a whole file is replaced by ReplaceFile instead.
/// On failure shows the box "Open Error" (the path, a blank line, the reason) and returns 0. An
/// unknown mode touches nothing and returns 0 without a box, whatever the other arguments are.
FileHandle FileOpener(std::string_view path, std::int16_t mode, std::int16_t recordLength,
                      Flag clearReadOnly);

/// Opens an existing file for reading alone. 0 on failure, of which nothing is told.
FileHandle OpenQuietly(std::string_view path);

/// A number that tells one opening of a file from all others of the run; 0 for a handle that isn't
/// open. Who keeps a handle from call to call learns by it that all files were closed in between,
/// and that the handle may stand for another file since.
std::int32_t OpeningOf(FileHandle file);

/// Shows the box "Disk Error" of an error number and maps the answer: 0 resume the failed
/// statement, 1 go on with the next, 2 unrecoverable, 3 unrecognised (also: number not in table).
std::int16_t FileErrors(std::int16_t errVal);

/// True if the file can be opened for reading. An empty path and a folder give false.
Flag FileExists(std::string_view path);

/// True if there is nothing of that name, neither a file nor a folder nor a link, whatever may be
/// done with it and wherever a link leads. Where that can't be told, as in a folder that may not be
/// searched, it is false.
bool IsMissing(std::string_view path);

void CloseFile(FileHandle file);

/// Closes every file that is open.
void CloseAllFiles();

/// Length in bytes; 0 for a handle that isn't open.
std::int64_t FileLength(FileHandle file);

/// True if the path still leads to the file that is open, and no other has been put in its place.
bool IsFileOf(FileHandle file, std::string_view path);

/// Reads bytes starting at `position`, counted from 1. False, with a run-time error, on failure:
/// "Bad file name or number" for a handle that isn't open and a position below 1, "Input past end
/// of file" if not all of the bytes are there, "Device I/O error" if the device fails. What could
/// be read before that has been read.
bool ReadBytes(FileHandle file, std::int64_t position, std::span<std::uint8_t> bytes);

/// The same, but what isn't there is no error: the number of bytes that were read.
std::size_t ReadWhatIsThere(FileHandle file, std::int64_t position, std::span<std::uint8_t> bytes);

/// Writes bytes at `position`, counted from 1. False, with a run-time error, on failure.
bool WriteBytes(FileHandle file, std::int64_t position, std::span<const std::uint8_t> bytes);

/// Cuts a file to a length in bytes, or makes it longer with bytes 0. False, with a run-time error,
/// on failure.
bool SetFileLength(FileHandle file, std::int64_t length);

/// Replaces the file by one that holds just these bytes: written beside it under a short name
/// ("~orv", the process's number and a count), brought to the disk, then renamed, so that whoever
/// reads sees the old file or the new one, also after a loss of power. The file keeps its access
/// rights; what a link points to is replaced, or made if it isn't there, and not the link. On
/// failure (a file that may not be written is one) shows "Open Error", leaves the old file as it
/// was and returns false.
bool ReplaceFile(std::string_view path, std::span<const std::uint8_t> bytes);

/// The same without a box; the run-time error tells the reason.
bool ReplaceFileSilently(std::string_view path, std::span<const std::uint8_t> bytes);

/// The same without any trace of a failure: the error number, 0 for none.
std::int16_t StoreFile(std::string_view path, std::span<const std::uint8_t> bytes);

/// The same, of just that name: a file whose name differs from it by case alone stays as it is, and
/// so does what a link of that name points to: the link is replaced.
std::int16_t StoreExactFile(std::string_view path, std::span<const std::uint8_t> bytes);

/// Reads a whole file of at most `limit` bytes. False, with a run-time error ("File too large" for
/// a longer file), on failure.
bool ReadWholeFile(std::string_view path, std::int64_t limit, Bytes& bytes);

/// The same without any trace of a failure: the error number, 0 for none.
std::int16_t FetchFile(std::string_view path, std::int64_t limit, Bytes& bytes);

/// Makes the folder of a file and those above it. What can't be made shows when the file is opened.
void MakeFolderOf(std::string_view path);

/// True if the folder is there and lists a file: neither a folder nor, as a name with a point in
/// front, hidden.
bool FolderShowsFile(std::string_view folder);

/// Deletes a file; a missing one is no error.
void DeleteFile(std::string_view path);

/// The same, but only one of just that name, and not one whose name differs from it by case.
void DeleteExactFile(std::string_view path);

/// Gives a file another name in the same folder tree; a file that had just that name is gone, but
/// not one whose name differs from it by case. Returns the error number, 0 for none. What isn't a
/// file, a link that leads to none, and a file that may not be written, isn't moved.
std::int16_t MoveFile(std::string_view from, std::string_view to);

/// Moves a file likewise, but where the disk can, it also stays under its old name until a new file
/// is moved there: at no moment there is none. Nothing that has the name `to` is replaced.
std::int16_t KeepFile(std::string_view from, std::string_view to);

/// A path in the same folder that nothing has, for a file that is to stand aside for a while. ""
/// if there is none.
std::string UnusedPathBeside(std::string_view path);

/// Keeps the folder of a file, as long as it lives, for one who changes several files of it that
/// belong together: another one, of this copy of the program or of another, waits for it up to 2
/// seconds and fails then. Whoever only reads, or changes single files, isn't hindered.
class FolderLock {
  public:
    /// `path` is that of a file in the folder, whether it is there or not.
    explicit FolderLock(std::string_view path);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    /// "Permission denied" if another one has the folder still, else 0: also where none can keep
    /// it, as one that may not be read or is on a disk without locks.
    std::int16_t Failure() const { return failure_; }

  private:
    int descriptor_ = -1;  // of the folder; -1 none
    std::int16_t failure_ = 0;
};

/// Gives the file `to` the access rights of the file `from`. Returns the error number, 0 for none.
std::int16_t CopyAccessRights(std::string_view from, std::string_view to);

/// Time of the last change. No value if the file isn't there.
std::optional<std::filesystem::file_time_type> FileDate(std::string_view path);

/// The platform's form of a path. Where no file of that very name exists, an existing one that
/// differs by case alone is taken, folder by folder.
std::string NativePath(std::string_view path);

/// The path as a user reads it in a message: native, in the core's code page.
std::string ShownPath(std::string_view path);

/// The program's form ("\" between folders) of a platform path.
std::string ProgramPath(std::string_view nativePath);

/// Trims blanks from both ends and appends "\" unless the last character is one.
std::string AddBackslash(std::string_view path);

/// The file name without folders, and without its last four characters if `cutExtension` is set.
std::string BaseName(std::string_view path, bool cutExtension);

}  // namespace orvantis
