#pragma once

// What went wrong, as callers are told it:
//
//   <errorDocument><operation>NAME</operation><reason>TEXT</reason></errorDocument>

/// Keeps what went wrong as the last failure of the calling thread, and puts an error document into
/// @p error if it is not null. Null is put there if there is no memory for one.
void reportFailure(const char* operation, const char* reason, char** error) noexcept;

/// A new error document about the last failure of the calling thread, for the caller to release
/// with `releaseGiven`; null if there was none. Throws `std::bad_alloc`.
char* lastFailure();
