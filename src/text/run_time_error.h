// Run-time failures as a status. A primitive that fails (a read past the end of a file, a value
// that doesn't fit its field) leaves a RunTimeError behind and goes on with a harmless value; the
// routine that must handle failures asks for it at its end. Nothing throws.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvantis {

struct RunTimeError {
    std::int16_t number = 0;  ///< 0: no error
    std::string description;
};

namespace error {
inline constexpr std::int16_t kOverflow = 6;
inline constexpr std::int16_t kOutOfMemory = 7;
inline constexpr std::int16_t kSubscript = 9;
inline constexpr std::int16_t kDivisionByZero = 11;
inline constexpr std::int16_t kTypeMismatch = 13;
inline constexpr std::int16_t kBadFileName = 52;
inline constexpr std::int16_t kFileNotFound = 53;
inline constexpr std::int16_t kBadFileMode = 54;
inline constexpr std::int16_t kFileAlreadyOpen = 55;
inline constexpr std::int16_t kDeviceInput = 57;
inline constexpr std::int16_t kDiskFull = 61;
inline constexpr std::int16_t kPastEnd = 62;
inline constexpr std::int16_t kFileTooLarge = 63;
inline constexpr std::int16_t kTooManyFiles = 67;
inline constexpr std::int16_t kPermission = 70;
inline constexpr std::int16_t kPathAccess = 75;
inline constexpr std::int16_t kPathNotFound = 76;
}  // namespace error

/// The program's words for an error number, "Error n" for a number without words of its own.
std::string RunTimeErrorText(std::int16_t number);

/// Leaves an error behind. The first one stands until it is taken.
void RaiseRunTimeError(std::int16_t number);

/// True if an error stands; `runTimeError` then receives it and none stands any more.
bool TakeRunTimeError(RunTimeError& runTimeError);

/// Number of the error that stands, 0 if none; leaves it standing.
std::int16_t PendingRunTimeError();

/// Takes away, at the end of its life, an error that was left behind during it, and that nobody is
/// to be told of. One that stood before stays: it belongs to others.
class ErrorsDropped {
  public:
    ErrorsDropped() : stoodBefore_(PendingRunTimeError() != 0) {}
    ~ErrorsDropped() {
        RunTimeError left;
        if (!stoodBefore_) TakeRunTimeError(left);
    }
    ErrorsDropped(const ErrorsDropped&) = delete;
    ErrorsDropped& operator=(const ErrorsDropped&) = delete;

  private:
    bool stoodBefore_;
};

}  // namespace orvantis
