#include "platform/dao/seal.h"

#include <QMessageAuthenticationCode>
#include <QRandomGenerator>
#include <QtEndian>

#include <functional>
#include <numeric>

namespace dao::seal {

namespace {

constexpr char Mark[] = "\xC3TV\x1A";  // no text file, picture or archive begins like this
constexpr int MarkSize = 4;
constexpr int SaltedSize = 8;
constexpr int CheckSize = 6;

// Far fewer than the 256,000 of the file's own key derivation, which makes trying out passwords
// cheaper. A catalogue's password is thirteen random characters, out of reach either way.
constexpr int Rounds = 500;

// First block of PBKDF2 with HMAC-SHA-512 (RFC 8018, section 5.2), cut to six bytes.
QByteArray PasswordCheck(const QByteArray& password, const QByteArray& salt) {
    QByteArray last = salt + QByteArray("\0\0\0\1", 4);
    QByteArray sum(64, '\0');
    for (int round = 0; round < Rounds; ++round) {
        last = QMessageAuthenticationCode::hash(last, password, QCryptographicHash::Sha512);
        for (qsizetype i = 0; i < sum.size(); ++i) {
            sum[i] = static_cast<char>(sum.at(i) ^ last.at(i));
        }
    }
    return sum.first(CheckSize);
}

QByteArray Crc(const QByteArray& bytes) {
    QByteArray crc(2, '\0');
    qToBigEndian(qChecksum(bytes), crc.data());
    return crc;
}

}  // namespace

QByteArray Make(const QByteArray& password) {
    QByteArray bytes(Mark, MarkSize);
    bytes.resize(SaltedSize);
    qToBigEndian(QRandomGenerator::system()->generate(), bytes.data() + MarkSize);
    bytes += PasswordCheck(password, bytes);
    return bytes + Crc(bytes);
}

Failure Explain(const QByteArray& bytes, const QByteArray& password) {
    const QByteArray start = bytes.leftJustified(Size, '\0', true);
    const int alike = std::inner_product(Mark, Mark + MarkSize, start.begin(), 0, std::plus<>(),
                                         std::equal_to<>());
    // One changed byte in the mark is damage to a catalogue; more is another kind of file.
    if (alike < MarkSize - 1) {
        return Failure::NotACatalogue;
    }
    const QByteArray crc = start.sliced(SaltedSize + CheckSize);
    if (crc != Crc(start.chopped(crc.size()))) {
        return Failure::Damaged;
    }
    const bool right =
        start.mid(SaltedSize, CheckSize) == PasswordCheck(password, start.first(SaltedSize));
    return right ? Failure::Damaged : Failure::WrongPassword;
}

}  // namespace dao::seal
