#pragma once

class VRDCrypto;

// The one session of the process with the crypto provider. None of these takes a lock: the store
// calls them under its own.

/// The binding of the provider; made at the first call, which loads the provider, and never ended.
VRDCrypto* getCryptoInstance();

/// Opens the session.
/// @param handle null on entry; receives the session's handle once there is one
/// @return the handle; null if there is no usable session. After a null result with @p handle set,
///         the session is open but was not given its settings.
void* openCryptoSession(void*& handle);

/// Ends the session and terminates the provider. Does nothing for a null handle. What the provider
/// answers is not looked at.
void closeCryptoSession(void*& handle);
