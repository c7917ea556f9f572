#pragma once

#include "platform/secret.h"

#include <QByteArray>

#include <array>
#include <span>

// The block cipher Rijndael in its general form (Daemen and Rijmen, "AES Proposal: Rijndael",
// version 2, 1999; FIPS 197 for blocks of four words): blocks and keys of four to eight words of 32
// bits. Rows are shifted by 1, 2 and 3 columns, in blocks of eight words by 1, 3 and 4.
//
// The texts of the settings file go through EncryptData and DecryptData, with blocks and keys of
// 256 bits. An instance serves one call and leaves neither key nor clear text in memory.
class CRijndael {
public:
    CRijndael() = default;
    CRijndael(const CRijndael&) = delete;
    CRijndael& operator=(const CRijndael&) = delete;

    // The tables of the field and of the rounds, which gkey and the blocks need.
    void gentables();

    // Block and key size in words, and the key, of which the first 4 * nk bytes count. Erro 5 for a
    // size outside 4 to 8 or too short a key.
    void gkey(qint32 nb, qint32 nk, std::span<const quint8> key);

    // One block in place: the first 4 * nb bytes of `buff`. Erro 5 when it is shorter or no key is
    // set.
    void Encrypt(std::span<quint8> buff) const;
    void Decrypt(std::span<quint8> buff) const;

    // The message's length in four bytes, little-endian, the message and zeros up to a whole block,
    // each block by itself. The first 32 bytes of the password are the key, a shorter one is filled
    // with zeros. Empty when either is empty.
    QByteArray EncryptData(const QByteArray& bytMessage, const QByteArray& bytPassword);

    // The message again. Empty when either is empty, for a length that is no multiple of 32, and
    // for a message longer than the blocks hold, which is how most wrong passwords end; Erro 9 for
    // one of length 0 or less, which is how the others end. The caller wipes it.
    QByteArray DecryptData(const QByteArray& bytIn, const QByteArray& bytPassword);

private:
    static constexpr qint32 MaxWords = 8;
    static constexpr qint32 MaxRounds = 6 + MaxWords;

    using ByteTable = std::array<quint8, 256>;
    using RoundTable = std::array<quint32, 256>;
    using ShiftTable = std::array<quint8, 3 * MaxWords>;  // rows 1 to 3 of each column
    using Schedule = std::array<quint32, (MaxRounds + 1) * MaxWords>;

    void SetPassword(const QByteArray& bytPassword);
    void Transform(std::span<quint8> buff, const Schedule& schedule, const RoundTable& table,
                   const ByteTable& substitution, const ShiftTable& shifts) const;
    quint32 Substitute(quint32 word) const;
    quint32 Unmix(quint32 word) const;

    qint32 nb_ = 0;
    qint32 nr_ = 0;
    ByteTable exponent_ = {};  // powers of 3
    ByteTable logarithm_ = {};
    ByteTable forwardSubstitution_ = {};
    ByteTable inverseSubstitution_ = {};
    RoundTable forwardTable_ = {};
    RoundTable inverseTable_ = {};
    std::array<quint8, 30> roundConstants_ = {};
    ShiftTable forwardShifts_ = {};
    ShiftTable inverseShifts_ = {};
    Schedule forwardKey_ = {};
    Schedule inverseKey_ = {};
    const secret::WipeAtEnd<Schedule> withoutForwardKey_{forwardKey_};
    const secret::WipeAtEnd<Schedule> withoutInverseKey_{inverseKey_};
};
