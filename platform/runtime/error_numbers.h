// Numbers of errors by name: those of the classic run time, and of the classic desktop database engine (3000
// and above). platform/runtime/error.h has the texts.
#pragma once

namespace qk::errors {

inline constexpr int kInvalidCall = 5;  ///< procedure call or argument
inline constexpr int kOverflow = 6;
inline constexpr int kOutOfMemory = 7;
inline constexpr int kIndexOutOfRange = 9;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kTypeMismatch = 13;  ///< types don't fit
inline constexpr int kBadFileName = 52;
inline constexpr int kFileNotFound = 53;
inline constexpr int kFileAlreadyOpen = 55;
inline constexpr int kDeviceError = 57;  ///< input or output on a device failed
inline constexpr int kFileExists = 58;
inline constexpr int kDiskFull = 61;
inline constexpr int kPastEndOfFile = 62;
inline constexpr int kDeviceUnavailable = 68;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kDiskNotReady = 71;
inline constexpr int kPathAccess = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kObjectNotSet = 91;  ///< no object is set
inline constexpr int kInvalidNull = 94;   ///< Null where none can be
inline constexpr int kObjectRequired = 424;
inline constexpr int kDuplicateElement = 457;
inline constexpr int kPrinterError = 482;

inline constexpr int kReservedError = 3000;  ///< what has no number of its own
inline constexpr int kInvalidArgument = 3001;
inline constexpr int kTableExists = 3010;
inline constexpr int kObjectNotFound = 3011;
inline constexpr int kObjectExists = 3012;
inline constexpr int kNoSuchIndex = 3015;
inline constexpr int kNoCurrentIndex = 3019;
inline constexpr int kNotEditing = 3020;  ///< Update or CancelUpdate without AddNew or Edit
inline constexpr int kNoCurrentRecord = 3021;
inline constexpr int kDuplicateKey = 3022;
inline constexpr int kStoreNotFound = 3024;  ///< file of a database
inline constexpr int kStoreDiskFull = 3026;
inline constexpr int kNotUpdatable = 3027;
inline constexpr int kNoLogin = 3029;
inline constexpr int kConnectionLost =
    3043;  ///< disk or network failed; whether the change went through is open
inline constexpr int kStorePathNotFound = 3044;  ///< folder of a database
inline constexpr int kFileInUse = 3045;
inline constexpr int kStoreDamaged = 3049;
inline constexpr int kStoreNotOpened = 3051;  ///< held by others, or without rights
inline constexpr int kNullInKey = 3058;
inline constexpr int kCancelled = 3059;
inline constexpr int kUnknownColumn = 3061;
inline constexpr int kNoActionQuery = 3065;  ///< a SELECT where an action query is wanted
inline constexpr int kNoUpdatableQuery = 3073;
inline constexpr int kQuerySyntax = 3075;
inline constexpr int kExpressionSyntax = 3077;
inline constexpr int kUnknownTable = 3078;
inline constexpr int kAmbiguousName = 3079;
inline constexpr int kUnknownFunction = 3085;
inline constexpr int kNoDeletableTable = 3086;
inline constexpr int kMisplacedAggregate = 3096;
inline constexpr int kNoReadPermission = 3112;  ///< also any other missing right
inline constexpr int kNotGrouped = 3122;
inline constexpr int kInvalidName = 3125;  ///< empty, too long, or with characters that can't be
inline constexpr int kBadBrackets = 3126;
inline constexpr int kUnknownTargetColumn = 3127;  ///< of an INSERT
inline constexpr int kCallFailed = 3146;           ///< by another program's interface
inline constexpr int kNoBookmark = 3159;
inline constexpr int kTextTooLong = 3163;
inline constexpr int kFieldNotUpdatable = 3164;
inline constexpr int kRecordDeleted = 3167;
inline constexpr int kNotSavedLocked = 3186;
inline constexpr int kFieldExists = 3191;
inline constexpr int kChangedMeanwhile = 3197;  ///< someone else changed the data
inline constexpr int kReferredTo = 3200;        ///< rows of another table refer to it
inline constexpr int kReferenceMissing = 3201;  ///< a row that is referred to isn't there
inline constexpr int kStoreExists = 3204;
inline constexpr int kInvalidOperation = 3219;
inline constexpr int kNotSupported = 3251;
inline constexpr int kLocked = 3260;  ///< by another user
inline constexpr int kNoSuchElement = 3265;
inline constexpr int kPrimaryKeyExists = 3283;
inline constexpr int kIndexExists = 3284;
inline constexpr int kUnionColumnCount = 3307;
inline constexpr int kRequiredField = 3314;
inline constexpr int kEmptyText = 3315;
inline constexpr int kValidationRule = 3317;
inline constexpr int kUnknownFormat = 3343;  ///< not a database
inline constexpr int kValueCount = 3346;     ///< of an INSERT
inline constexpr int kOpenedExclusively = 3356;
inline constexpr int kTooComplex = 3360;
inline constexpr int kConversionFailed = 3421;
inline constexpr int kCriterionTypes = 3464;

}  // namespace qk::errors
