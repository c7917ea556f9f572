#include "platform/system/proof.h"

#include "platform/erro.h"
#include "platform/system/paths.h"

#include <QFile>

#include <array>
#include <memory>
#include <openssl/evp.h>

namespace sys {
namespace {

struct Freed {
    void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
    void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
    void operator()(EVP_PKEY_CTX* context) const { EVP_PKEY_CTX_free(context); }
};
using Context = std::unique_ptr<EVP_MD_CTX, Freed>;
using Key = std::unique_ptr<EVP_PKEY, Freed>;

const unsigned char* Bytes(const QByteArray& text) {
    return reinterpret_cast<const unsigned char*>(text.constData());
}

unsigned char* Bytes(QByteArray& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

void Check(bool done) {
    if (!done) {
        throw Erro(Erro::InternalError);
    }
}

Key SecretKey(const QByteArray& secret) {
    if (secret.size() != KeySize) {
        throw Erro(Erro::InvalidArgument);
    }
    Key key(EVP_PKEY_new_raw_private_key(EVP_PKEY_ED25519, nullptr, Bytes(secret), KeySize));
    Check(key != nullptr);
    return key;
}

QByteArray Raw(const Key& key, int (*get)(const EVP_PKEY*, unsigned char*, size_t*)) {
    QByteArray raw(KeySize, Qt::Uninitialized);
    size_t size = KeySize;
    Check(get(key.get(), Bytes(raw), &size) == 1);
    return raw;
}

}  // namespace

QByteArray HashOfFile(const QString& path) {
    QFile file(ToNative(path));
    if (!file.open(QIODevice::ReadOnly)) {
        throw Erro(file.exists() ? Erro::PathFileAccess : Erro::FileNotFound);
    }
    const Context context(EVP_MD_CTX_new());
    Check(context && EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) == 1);
    std::array<char, 65536> block;
    for (;;) {
        const qint64 size = file.read(block.data(), qint64(block.size()));
        if (size < 0) {
            throw Erro(Erro::PathFileAccess);
        }
        if (size == 0) {
            break;
        }
        Check(EVP_DigestUpdate(context.get(), block.data(), size_t(size)) == 1);
    }
    QByteArray hash(HashSize, Qt::Uninitialized);
    Check(EVP_DigestFinal_ex(context.get(), Bytes(hash), nullptr) == 1);
    return hash;
}

KeyPair NewKeyPair() {
    EVP_PKEY* made = nullptr;
    const std::unique_ptr<EVP_PKEY_CTX, Freed> context(
        EVP_PKEY_CTX_new_id(EVP_PKEY_ED25519, nullptr));
    Check(context && EVP_PKEY_keygen_init(context.get()) == 1 &&
          EVP_PKEY_keygen(context.get(), &made) == 1);
    const Key key(made);
    return {Raw(key, EVP_PKEY_get_raw_private_key), Raw(key, EVP_PKEY_get_raw_public_key)};
}

QByteArray OpenKeyOf(const QByteArray& secretKey) {
    return Raw(SecretKey(secretKey), EVP_PKEY_get_raw_public_key);
}

QByteArray Sign(const QByteArray& message, const QByteArray& secretKey) {
    const Key key = SecretKey(secretKey);
    const Context context(EVP_MD_CTX_new());
    QByteArray signature(SignatureSize, Qt::Uninitialized);
    size_t size = SignatureSize;
    Check(context && EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
          EVP_DigestSign(context.get(), Bytes(signature), &size, Bytes(message),
                         size_t(message.size())) == 1);
    return signature;
}

bool IsSigned(const QByteArray& message, const QByteArray& signature, const QByteArray& openKey) {
    if (signature.size() != SignatureSize || openKey.size() != KeySize) {
        return false;
    }
    const Key key(EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, Bytes(openKey), KeySize));
    const Context context(EVP_MD_CTX_new());
    return key && context &&
           EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
           EVP_DigestVerify(context.get(), Bytes(signature), SignatureSize, Bytes(message),
                            size_t(message.size())) == 1;
}

}  // namespace sys
