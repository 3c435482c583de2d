#include "text/run_time_error.h"

namespace orvantis {

namespace {

std::int16_t pendingNumber = 0;

}  // namespace

std::string RunTimeErrorText(std::int16_t number) {
    switch (number) {
        case error::kOverflow:
            return "Overflow";
        case error::kOutOfMemory:
            return "Out of memory";
        case error::kSubscript:
            return "Subscript out of range";
        case error::kDivisionByZero:
            return "Division by zero";
        case error::kTypeMismatch:
            return "Type mismatch";
        case error::kBadFileName:
            return "Bad file name or number";
        case error::kFileNotFound:
            return "File not found";
        case error::kBadFileMode:
            return "Bad file mode";
        case error::kFileAlreadyOpen:
            return "File already open";
        case error::kDeviceInput:
            return "Device I/O error";
        case error::kDiskFull:
            return "Disk full";
        case error::kPastEnd:
            return "Input past end of file";
        case error::kFileTooLarge:
            return "File too large";
        case error::kTooManyFiles:
            return "Too many files";
        case error::kPermission:
            return "Permission denied";
        case error::kPathAccess:
            return "Path/File access error";
        case error::kPathNotFound:
            return "Path not found";
        default:
            return "Error " + std::to_string(number);
    }
}

void RaiseRunTimeError(std::int16_t number) {
    if (pendingNumber == 0) pendingNumber = number;
}

bool TakeRunTimeError(RunTimeError& runTimeError) {
    if (pendingNumber == 0) return false;
    runTimeError = {pendingNumber, RunTimeErrorText(pendingNumber)};
    pendingNumber = 0;
    return true;
}

std::int16_t PendingRunTimeError() {
    return pendingNumber;
}

}  // namespace orvantis
