// The one place that touches files. See files.h for the contract.
#include "session/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "session/session_state.h"
#include "text/code_page.h"
#include "text/strings.h"

namespace orvantis {

namespace {

namespace fs = std::filesystem;

// Open files by handle; slot 0 stands unused, -1 is free.
constexpr std::size_t kMostFiles = 256;

std::array<int, kMostFiles> MakeFreeSlots() {
    std::array<int, kMostFiles> slots{};
    slots.fill(-1);
    return slots;
}

std::array<int, kMostFiles> descriptors = MakeFreeSlots();

// The number of the opening behind each handle.
std::array<std::int32_t, kMostFiles> openings{};

// Takes a free slot for an open file.
FileHandle EnterFile(std::array<int, kMostFiles>::iterator slot, int descriptor) {
    static std::int32_t opened = 0;
    *slot = descriptor;
    const auto file = slot - descriptors.begin();
    openings[static_cast<std::size_t>(file)] = opened = opened == INT32_MAX ? 1 : opened + 1;
    return static_cast<FileHandle>(file);
}

int Descriptor(FileHandle file) {
    if (file < 1 || static_cast<std::size_t>(file) >= kMostFiles) return -1;
    return descriptors[static_cast<std::size_t>(file)];
}

std::int16_t ErrorOfErrno(int number, const std::string& nativePath) {
    switch (number) {
        case ENOENT: {
            std::error_code ignored;
            const fs::path folder = fs::path(nativePath).parent_path();
            const bool folderThere = folder.empty() || fs::is_directory(folder, ignored);
            return folderThere ? error::kFileNotFound : error::kPathNotFound;
        }
        case ENOTDIR:
            return error::kPathNotFound;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return error::kDiskFull;
        case EMFILE:
        case ENFILE:
            return error::kTooManyFiles;
        case ENAMETOOLONG:
        case EINVAL:
            return error::kBadFileName;
        case EACCES:
        case EPERM:
        case EROFS:
            return error::kPermission;
        case EIO:
            return error::kDeviceInput;
        default:
            return error::kPathAccess;
    }
}

// A path that the platform takes whole: not empty, and without a NUL, at which it would end and
// name another file.
bool IsUsablePath(std::string_view path) {
    return !path.empty() && path.find('\0') == std::string_view::npos;
}

// Opens a regular file; devices, pipes and folders are refused without waiting for them.
int OpenRegular(const std::string& nativePath, int flags, std::int16_t& errorNumber) {
    if (!IsUsablePath(nativePath)) {
        errorNumber = error::kBadFileName;
        return -1;
    }
    const int descriptor = ::open(nativePath.c_str(), flags | O_CLOEXEC | O_NONBLOCK, 0666);
    if (descriptor < 0) {
        errorNumber = ErrorOfErrno(errno, nativePath);
        return -1;
    }
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        errorNumber = error::kPathAccess;
        return -1;
    }
    return descriptor;
}

// Opens in the access of a mode. Existing files that may not be written are opened for reading.
int OpenInMode(const std::string& nativePath, std::int16_t mode, std::int16_t& errorNumber) {
    switch (mode) {
        case open_mode::kWriteText:
            return OpenRegular(nativePath, O_WRONLY | O_CREAT | O_TRUNC, errorNumber);
        case open_mode::kReadText:
            return OpenRegular(nativePath, O_RDONLY, errorNumber);
        case open_mode::kAppendText:
            return OpenRegular(nativePath, O_WRONLY | O_CREAT | O_APPEND, errorNumber);
        default: {
            const int descriptor = OpenRegular(nativePath, O_RDWR, errorNumber);
            if (descriptor >= 0 || errorNumber != error::kPermission) return descriptor;
            return OpenRegular(nativePath, O_RDONLY, errorNumber);
        }
    }
}

void ShowOpenError(std::string_view path, std::int16_t errorNumber) {
    if (session.shell == nullptr) return;
    std::string text = ShownPath(path);
    text.append(kCrLf).append(kCrLf).append(RunTimeErrorText(errorNumber));
    session.shell->MessageBox(text, "Open Error", BoxButtons::Ok, BoxIcon::None);
}

// What is there of the bytes from an offset on. Returns their number.
std::size_t ReadFrom(int descriptor, std::int64_t offset, std::span<std::uint8_t> bytes) {
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t got = ::pread(descriptor, &bytes[filled], bytes.size() - filled,
                                    offset + static_cast<std::int64_t>(filled));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        filled += static_cast<std::size_t>(got);
    }
    return filled;
}

bool WriteAll(int descriptor, std::int64_t offset, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::pwrite(descriptor, bytes.data(), bytes.size(), offset);
        if (written < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
        offset += written;
    }
    return true;
}

// What a link points to, link by link, whether that is there or not. False in a ring of links.
bool FollowLinks(fs::path& path) {
    constexpr int mostLinks = 40;  // as many as the platform follows
    std::error_code failure;
    for (int i = 0; i < mostLinks; ++i) {
        if (!fs::is_symlink(path, failure)) return true;
        const fs::path link = fs::read_symlink(path, failure);
        if (failure) return false;
        path = path.parent_path() / link;  // an absolute link stands for itself
    }
    return false;
}

// Names of files that stand aside for a while: short, so that they are allowed wherever the file's
// own is, and with the process's number, so that two copies of the program don't meet.
constexpr int kMostAsides = 100;

fs::path AsidePath(const fs::path& folder, int number) {
    return folder / ("~orv" + std::to_string(::getpid()) + "-" + std::to_string(number));
}

// Opens a new file in the folder of the one that it will replace. A name that is taken, by a link
// or by what a crash left, is passed over.
int OpenAside(const fs::path& folder, std::string& aside, std::int16_t& errorNumber) {
    for (int i = 1; i <= kMostAsides; ++i) {
        aside = AsidePath(folder, i).string();
        const int descriptor = OpenRegular(aside, O_WRONLY | O_CREAT | O_EXCL, errorNumber);
        if (descriptor >= 0 || errno != EEXIST) return descriptor;
    }
    return -1;
}

// Brings what was written to the disk, so that a rename can't come before it. A file system that
// has nothing to bring there is no failure.
bool Settle(int descriptor) {
    return ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

// Fills the file aside and gives it the access rights of the one that it will replace; a link has
// none of its own.
std::int16_t FillAside(int descriptor, const std::string& target,
                       std::span<const std::uint8_t> bytes) {
    struct stat old {};
    const bool hasRights = ::lstat(target.c_str(), &old) == 0 && !S_ISLNK(old.st_mode);
    const bool done = (!hasRights || ::fchmod(descriptor, old.st_mode & 07777) == 0) &&
                      WriteAll(descriptor, 0, bytes) && Settle(descriptor);
    std::int16_t errorNumber = done ? std::int16_t{0} : ErrorOfErrno(errno, target);
    if (::close(descriptor) != 0 && errorNumber == 0) errorNumber = ErrorOfErrno(errno, target);
    return errorNumber;
}

// Why what has that very name can't be replaced; 0 if it can, as a link, or if there is nothing.
std::int16_t WhyNotReplaced(const fs::path& target) {
    std::error_code failure;
    const fs::file_status status = fs::symlink_status(target, failure);
    if (fs::is_symlink(status) || !fs::exists(status)) return 0;
    if (fs::is_directory(status)) return error::kPathAccess;
    return ::access(target.c_str(), W_OK) == 0 ? std::int16_t{0}
                                               : ErrorOfErrno(errno, target.string());
}

// Writes the bytes beside the file and renames. Returns the error number, 0 on success.
std::int16_t ReplaceNative(const std::string& path, bool followsLinks,
                           std::span<const std::uint8_t> bytes) {
    if (!IsUsablePath(path)) return error::kBadFileName;
    fs::path target = path;
    if (followsLinks && !FollowLinks(target)) return error::kPathAccess;
    if (const std::int16_t failure = WhyNotReplaced(target); failure != 0) return failure;
    std::string aside;
    std::int16_t errorNumber = 0;
    const int descriptor = OpenAside(target.parent_path(), aside, errorNumber);
    if (descriptor < 0) return errorNumber;
    errorNumber = FillAside(descriptor, target.string(), bytes);
    if (errorNumber == 0 && ::rename(aside.c_str(), target.c_str()) != 0) {
        errorNumber = ErrorOfErrno(errno, target.string());
    }
    if (errorNumber != 0) ::unlink(aside.c_str());
    return errorNumber;
}

// The path with the separators of the platform, whatever is there.
std::string PlatformForm(std::string_view path) {
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

// True if both are names of the same file, which has several.
bool AreNamesOfOneFile(const std::string& a, const std::string& b) {
    struct stat left {};
    struct stat right {};
    return ::lstat(a.c_str(), &left) == 0 && ::lstat(b.c_str(), &right) == 0 && left.st_nlink > 1 &&
           left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

// True if two names differ at most by the case of the letters a to z. Other letters may have more
// than one byte in the names of the platform and must be the same.
bool SameName(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

// A name in `folder` that is `name` but for the case of its letters; `name` if there is none.
std::string FindName(const fs::path& folder, const std::string& name) {
    std::error_code failure;
    for (fs::directory_iterator it(folder.empty() ? fs::path(".") : folder, failure), end;
         !failure && it != end; it.increment(failure)) {
        std::string candidate = it->path().filename().string();
        if (SameName(candidate, name)) return candidate;
    }
    return name;
}

// True if something has that very name, a link that leads to nothing too.
bool IsNameTaken(const fs::path& path) {
    std::error_code failure;
    const fs::file_type type = fs::symlink_status(path, failure).type();
    return type != fs::file_type::not_found && type != fs::file_type::none;
}

// The state of a file, and why there is none; 0 if there is. A link that leads to nothing isn't a
// file that is missing.
std::int16_t FetchStatus(const std::string& path, struct stat& status) {
    if (::stat(path.c_str(), &status) == 0) return 0;
    const int number = errno;
    return number == ENOENT && IsNameTaken(path) ? error::kPathAccess : ErrorOfErrno(number, path);
}

// The platform's forms of the two paths of a move, and why it can't be; 0 if it can.
std::int16_t PrepareMove(std::string_view from, std::string_view to, std::string& source,
                         std::string& target) {
    if (!IsUsablePath(from) || !IsUsablePath(to)) return error::kBadFileName;
    source = NativePath(from);
    target = PlatformForm(to);
    struct stat status {};
    const std::int16_t failure = FetchStatus(source, status);
    if (failure != 0) return failure;
    if (!S_ISREG(status.st_mode)) return error::kPathAccess;
    return ::access(source.c_str(), W_OK) == 0 ? std::int16_t{0} : ErrorOfErrno(errno, source);
}

}  // namespace

FileHandle FileOpener(std::string_view path, std::int16_t mode, std::int16_t /*recordLength*/,
                      Flag clearReadOnly) {
    if (mode < open_mode::kWriteText || mode > open_mode::kBinary) return 0;
    const auto slot = std::find(descriptors.begin() + 1, descriptors.end(), -1);
    const std::string native = NativePath(path);
    if (slot == descriptors.end() || !IsUsablePath(native)) {
        ShowOpenError(path, IsUsablePath(native) ? error::kTooManyFiles : error::kBadFileName);
        return 0;
    }
    std::error_code ignored;
    if (clearReadOnly != 0 && fs::is_regular_file(native, ignored)) {
        fs::permissions(native, fs::perms::owner_write, fs::perm_options::add, ignored);
    }
    std::int16_t errorNumber = 0;
    const int descriptor = OpenInMode(native, mode, errorNumber);
    if (descriptor < 0) {
        ShowOpenError(path, errorNumber);
        return 0;
    }
    return EnterFile(slot, descriptor);
}

FileHandle OpenQuietly(std::string_view path) {
    const auto slot = std::find(descriptors.begin() + 1, descriptors.end(), -1);
    if (slot == descriptors.end()) return 0;
    std::int16_t ignored = 0;
    const int descriptor = OpenRegular(NativePath(path), O_RDONLY, ignored);
    return descriptor < 0 ? FileHandle{0} : EnterFile(slot, descriptor);
}

std::int32_t OpeningOf(FileHandle file) {
    return Descriptor(file) < 0 ? 0 : openings[static_cast<std::size_t>(file)];
}

std::int16_t FileErrors(std::int16_t errVal) {
    struct Row {
        std::int16_t number;
        std::string_view message;
        BoxButtons buttons;
        BoxIcon icon;
    };
    static constexpr std::array<Row, 10> rows = {{
        {52, "Filename is illegal", BoxButtons::Ok, BoxIcon::Exclamation},
        {64, "Filename is illegal", BoxButtons::Ok, BoxIcon::Exclamation},
        {54, "Can't open file for requested access type.", BoxButtons::Ok, BoxIcon::Exclamation},
        {55, "File is already open.", BoxButtons::Ok, BoxIcon::Exclamation},
        {57, "Internal disk error.", BoxButtons::YesNo, BoxIcon::Exclamation},
        {61, "Disk is full. Continue?", BoxButtons::YesNoCancel, BoxIcon::Question},
        {62,
         "File has nonstandard end-of-file marker, or an attempt has been made to read beyond "
         "the end-of-file marker.",
         BoxButtons::Ok, BoxIcon::Exclamation},
        {68, "Device appears to be unavailable.", BoxButtons::YesNo, BoxIcon::Exclamation},
        {71, "Insert a disk into the disk drive.", BoxButtons::Ok, BoxIcon::Exclamation},
        {76, "Path does not exist.", BoxButtons::Ok, BoxIcon::Exclamation},
    }};
    const auto* row = std::find_if(rows.begin(), rows.end(),
                                   [errVal](const Row& r) { return r.number == errVal; });
    if (row == rows.end() || session.shell == nullptr) return 3;
    switch (session.shell->MessageBox(row->message, "Disk Error", row->buttons, row->icon)) {
        case BoxAnswer::Ok:
        case BoxAnswer::Retry:
            return 0;
        case BoxAnswer::Ignore:
            return 1;
        case BoxAnswer::Cancel:
        case BoxAnswer::Abort:
            return 2;
        default:
            return 3;
    }
}

Flag FileExists(std::string_view path) {
    if (path.empty()) return kFalse;
    std::int16_t ignored = 0;
    const int descriptor = OpenRegular(NativePath(path), O_RDONLY, ignored);
    if (descriptor < 0) return kFalse;
    ::close(descriptor);
    return kTrue;
}

bool IsMissing(std::string_view path) {
    if (!IsUsablePath(path)) return true;
    std::error_code ignored;
    return fs::symlink_status(NativePath(path), ignored).type() == fs::file_type::not_found;
}

void CloseFile(FileHandle file) {
    const int descriptor = Descriptor(file);
    if (descriptor < 0) return;
    ::close(descriptor);
    descriptors[static_cast<std::size_t>(file)] = -1;
}

void CloseAllFiles() {
    for (std::size_t slot = 1; slot < kMostFiles; ++slot) CloseFile(static_cast<FileHandle>(slot));
}

std::int64_t FileLength(FileHandle file) {
    struct stat status {};
    if (::fstat(Descriptor(file), &status) != 0) return 0;
    return status.st_size;
}

bool IsFileOf(FileHandle file, std::string_view path) {
    if (!IsUsablePath(path)) return false;
    struct stat opened {};
    struct stat named {};
    return ::fstat(Descriptor(file), &opened) == 0 &&
           ::stat(NativePath(path).c_str(), &named) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

std::size_t ReadWhatIsThere(FileHandle file, std::int64_t position, std::span<std::uint8_t> bytes) {
    return position >= 1 ? ReadFrom(Descriptor(file), position - 1, bytes) : 0;
}

bool ReadBytes(FileHandle file, std::int64_t position, std::span<std::uint8_t> bytes) {
    if (Descriptor(file) < 0 || position < 1) {
        RaiseRunTimeError(error::kBadFileName);
        return false;
    }
    const std::size_t filled = ReadWhatIsThere(file, position, bytes);
    if (filled == bytes.size()) return true;
    const std::int64_t end = position - 1 + static_cast<std::int64_t>(filled);
    RaiseRunTimeError(end >= FileLength(file) ? error::kPastEnd : error::kDeviceInput);
    return false;
}

bool WriteBytes(FileHandle file, std::int64_t position, std::span<const std::uint8_t> bytes) {
    const int descriptor = Descriptor(file);
    if (descriptor < 0 || position < 1) {
        RaiseRunTimeError(error::kBadFileName);
        return false;
    }
    if (WriteAll(descriptor, position - 1, bytes)) return true;
    RaiseRunTimeError(errno == EBADF ? error::kBadFileMode : ErrorOfErrno(errno, {}));
    return false;
}

bool SetFileLength(FileHandle file, std::int64_t length) {
    const int descriptor = Descriptor(file);
    if (descriptor < 0 || length < 0) {
        RaiseRunTimeError(error::kBadFileName);
        return false;
    }
    if (::ftruncate(descriptor, length) == 0) return true;
    const bool closedToWriting = errno == EBADF || errno == EINVAL;
    RaiseRunTimeError(closedToWriting ? error::kBadFileMode : ErrorOfErrno(errno, {}));
    return false;
}

bool ReplaceFile(std::string_view path, std::span<const std::uint8_t> bytes) {
    const std::int16_t errorNumber = StoreFile(path, bytes);
    if (errorNumber != 0) ShowOpenError(path, errorNumber);
    return errorNumber == 0;
}

std::int16_t StoreFile(std::string_view path, std::span<const std::uint8_t> bytes) {
    return ReplaceNative(NativePath(path), true, bytes);
}

std::int16_t StoreExactFile(std::string_view path, std::span<const std::uint8_t> bytes) {
    return ReplaceNative(PlatformForm(path), false, bytes);
}

bool ReplaceFileSilently(std::string_view path, std::span<const std::uint8_t> bytes) {
    const std::int16_t errorNumber = StoreFile(path, bytes);
    if (errorNumber != 0) RaiseRunTimeError(errorNumber);
    return errorNumber == 0;
}

std::int16_t FetchFile(std::string_view path, std::int64_t limit, Bytes& bytes) {
    bytes.clear();
    std::int16_t errorNumber = 0;
    const int descriptor = OpenRegular(NativePath(path), O_RDONLY, errorNumber);
    if (descriptor < 0) return errorNumber;
    struct stat status {};
    const bool sized = ::fstat(descriptor, &status) == 0 && status.st_size <= limit;
    if (sized) bytes.resize(static_cast<std::size_t>(status.st_size));
    const std::size_t filled = sized ? ReadFrom(descriptor, 0, bytes) : 0;
    ::close(descriptor);
    if (sized && filled == bytes.size()) return 0;
    bytes.clear();
    return sized ? error::kDeviceInput : error::kFileTooLarge;
}

bool ReadWholeFile(std::string_view path, std::int64_t limit, Bytes& bytes) {
    const std::int16_t errorNumber = FetchFile(path, limit, bytes);
    if (errorNumber != 0) RaiseRunTimeError(errorNumber);
    return errorNumber == 0;
}

void MakeFolderOf(std::string_view path) {
    if (!IsUsablePath(path)) return;
    const fs::path folder = fs::path(NativePath(path)).parent_path();
    std::error_code ignored;
    if (!folder.empty()) fs::create_directories(folder, ignored);
}

bool FolderShowsFile(std::string_view folder) {
    if (!IsUsablePath(folder)) return false;
    std::error_code failure;
    for (fs::directory_iterator it(NativePath(folder), failure), end; !failure && it != end;
         it.increment(failure)) {
        std::error_code unknown;
        const bool hidden = it->path().filename().string().front() == '.';
        if (!hidden && it->is_regular_file(unknown)) return true;
    }
    return false;
}

void DeleteFile(std::string_view path) {
    if (IsUsablePath(path)) ::unlink(NativePath(path).c_str());
}

void DeleteExactFile(std::string_view path) {
    if (IsUsablePath(path)) ::unlink(PlatformForm(path).c_str());
}

std::int16_t MoveFile(std::string_view from, std::string_view to) {
    std::string source;
    std::string target;
    if (const std::int16_t failure = PrepareMove(from, to, source, target); failure != 0) {
        return failure;
    }
    const bool oneFile = source != target && AreNamesOfOneFile(source, target);
    if (::rename(source.c_str(), target.c_str()) != 0) return ErrorOfErrno(errno, target);
    if (oneFile) ::unlink(source.c_str());  // which a rename leaves there
    return 0;
}

std::int16_t KeepFile(std::string_view from, std::string_view to) {
    std::string source;
    std::string target;
    if (const std::int16_t failure = PrepareMove(from, to, source, target); failure != 0) {
        return failure;
    }
    struct stat status {};
    const bool own = ::lstat(source.c_str(), &status) == 0 && status.st_uid == ::geteuid();
    if (own && ::link(source.c_str(), target.c_str()) == 0) return 0;
    return IsNameTaken(target) ? error::kPathAccess : MoveFile(from, to);
}

std::string UnusedPathBeside(std::string_view path) {
    const fs::path folder = fs::path(PlatformForm(path)).parent_path();
    std::error_code failure;
    for (int i = 1; i <= kMostAsides; ++i) {
        const fs::path unused = AsidePath(folder, i);
        if (fs::symlink_status(unused, failure).type() == fs::file_type::not_found) {
            return ProgramPath(unused.string());
        }
    }
    return "";
}

FolderLock::FolderLock(std::string_view path) {
    constexpr useconds_t pause = 20000;  // microseconds
    constexpr int mostPauses = 100;
    if (!IsUsablePath(path)) return;
    const fs::path folder = fs::path(NativePath(path)).parent_path();
    descriptor_ = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int i = 0; descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0; ++i) {
        if (errno != EWOULDBLOCK && errno != EINTR) return;  // there are no locks
        if (i == mostPauses) {
            failure_ = error::kPermission;
            return;
        }
        ::usleep(pause);
    }
}

FolderLock::~FolderLock() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

std::int16_t CopyAccessRights(std::string_view from, std::string_view to) {
    if (!IsUsablePath(from) || !IsUsablePath(to)) return error::kBadFileName;
    const std::string source = NativePath(from);
    const std::string target = NativePath(to);
    struct stat status {};
    const std::int16_t failure = FetchStatus(source, status);
    if (failure != 0) return failure;
    return ::chmod(target.c_str(), status.st_mode & 07777) == 0 ? std::int16_t{0}
                                                                : ErrorOfErrno(errno, target);
}

std::optional<fs::file_time_type> FileDate(std::string_view path) {
    if (!IsUsablePath(path)) return std::nullopt;
    std::error_code failure;
    const fs::file_time_type date = fs::last_write_time(NativePath(path), failure);
    if (failure) return std::nullopt;
    return date;
}

std::string NativePath(std::string_view path) {
    std::string native = PlatformForm(path);
    if (native.find('\0') != std::string::npos || IsNameTaken(native)) return native;

    // Folder by folder: the name as given if it exists, else one that differs by case alone.
    fs::path found;
    for (const fs::path& part : fs::path(native)) {
        fs::path next = found / part;
        if (!IsNameTaken(next)) next = found / FindName(found, part.string());
        found = std::move(next);
    }
    return found.string();
}

std::string ShownPath(std::string_view path) {
    return FromUtf8(PlatformForm(path));
}

std::string ProgramPath(std::string_view nativePath) {
    std::string path(nativePath);
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string AddBackslash(std::string_view path) {
    std::string result(Trim(path));
    if (result.empty() || result.back() != '\\') result += '\\';
    return result;
}

std::string BaseName(std::string_view path, bool cutExtension) {
    const std::size_t slash = path.find_last_of("\\/");
    std::string name(slash == std::string_view::npos ? path : path.substr(slash + 1));
    if (cutExtension) name.resize(name.size() < 4 ? 0 : name.size() - 4);
    return name;
}

}  // namespace orvantis
