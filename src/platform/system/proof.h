#pragma once

#include <QByteArray>
#include <QString>

// Hashes and signatures: SHA-256 (FIPS 180-4) and Ed25519 (RFC 8032), by OpenSSL. Hashes, keys and
// signatures are raw bytes.
namespace sys {

inline constexpr qsizetype HashSize = 32;
inline constexpr qsizetype KeySize = 32;
inline constexpr qsizetype SignatureSize = 64;

QByteArray HashOfFile(const QString& path);  // a path text; Erro 53, 75

struct KeyPair {
    QByteArray secret;  // the caller wipes it (platform/secret.h)
    QByteArray open;
};
KeyPair NewKeyPair();

// Erro 5 for a key of another size.
QByteArray OpenKeyOf(const QByteArray& secretKey);
QByteArray Sign(const QByteArray& message, const QByteArray& secretKey);

// False also for a key or a signature of another size.
bool IsSigned(const QByteArray& message, const QByteArray& signature, const QByteArray& openKey);

}  // namespace sys
