#include "settings/rijndael.h"

#include "platform/convert.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cstring>

using secret::WipeAtEnd;

namespace {

constexpr qint32 BlockWords = 8;
constexpr qint32 KeyWords = 8;
constexpr qsizetype BlockBytes = 4 * BlockWords;
constexpr qsizetype LengthBytes = 4;

// Twice the value in GF(2^8), modulo x^8 + x^4 + x^3 + x + 1.
constexpr quint8 Double(quint8 value) {
    return static_cast<quint8>((value << 1) ^ ((value & 0x80) ? 0x1B : 0));
}

constexpr quint8 ByteOf(quint32 word, int row) {
    return static_cast<quint8>(word >> (8 * row));
}

// Row 0 of a column is the lowest byte of its word.
constexpr quint32 Word(quint8 row0, quint8 row1, quint8 row2, quint8 row3) {
    return row0 | static_cast<quint32>(row1) << 8 | static_cast<quint32>(row2) << 16 |
           static_cast<quint32>(row3) << 24;
}

std::span<quint8> BlockAt(QByteArray& bytes, qsizetype at) {
    return {reinterpret_cast<quint8*>(bytes.data()) + at, static_cast<std::size_t>(BlockBytes)};
}

}  // namespace

void CRijndael::gentables() {
    // 3 to the 255 is 1 again: either number is its logarithm.
    quint8 power = 1;
    for (quint8 i = 0; quint8 & exponent : exponent_) {
        exponent = power;
        logarithm_[power] = i++;
        power = static_cast<quint8>(power ^ Double(power));
    }

    for (quint8 i = 0; quint8 & substitute : forwardSubstitution_) {
        const quint8 inverse = i == 0 ? 0 : exponent_[255u - logarithm_[i]];
        substitute = 99;
        for (int turn = 0; turn <= 4; ++turn) {
            substitute = static_cast<quint8>(substitute ^ std::rotl(inverse, turn));
        }
        inverseSubstitution_[substitute] = i++;
    }

    quint8 constant = 1;
    for (quint8& entry : roundConstants_) {
        entry = constant;
        constant = Double(constant);
    }

    const auto product = [this](quint8 a, quint8 b) {
        return a == 0 ? quint8(0) : exponent_[(logarithm_[a] + logarithm_[b]) % 255];
    };
    std::ranges::transform(forwardSubstitution_, forwardTable_.begin(),
                           [&](quint8 s) { return Word(product(s, 2), s, s, product(s, 3)); });
    std::ranges::transform(inverseSubstitution_, inverseTable_.begin(), [&](quint8 r) {
        return Word(product(r, 14), product(r, 9), product(r, 13), product(r, 11));
    });
}

void CRijndael::gkey(qint32 nb, qint32 nk, std::span<const quint8> key) {
    const auto outside = [](qint32 words) { return words < 4 || words > MaxWords; };
    if (outside(nb) || outside(nk) || key.size() < static_cast<std::size_t>(4 * nk)) {
        throw Erro(Erro::InvalidArgument);
    }
    nb_ = nb;
    nr_ = 6 + std::max(nb, nk);

    const std::array<qint32, 3> offsets = nb < 8 ? std::array{1, 2, 3} : std::array{1, 3, 4};
    for (qint32 column = 0; column < nb; ++column) {
        for (qint32 row = 0; row < 3; ++row) {
            const auto at = static_cast<std::size_t>(3 * column + row);
            const qint32 offset = offsets[static_cast<std::size_t>(row)];
            forwardShifts_[at] = static_cast<quint8>((column + offset) % nb);
            inverseShifts_[at] = static_cast<quint8>((column + nb - offset) % nb);
        }
    }

    // The whole schedule, of which smaller blocks use the beginning.
    const auto group = static_cast<std::size_t>(nk);
    for (std::size_t i = 0; quint32 & entry : forwardKey_) {
        if (i < group) {
            entry = qFromLittleEndian<quint32>(key.data() + 4 * i);
        } else {
            quint32 word = forwardKey_[i - 1];
            if (i % group == 0) {
                word = Substitute(std::rotr(word, 8)) ^ roundConstants_[i / group - 1];
            } else if (nk > 6 && i % group == 4) {
                word = Substitute(word);
            }
            entry = forwardKey_[i - group] ^ word;
        }
        ++i;
    }

    // Deciphering takes the rounds from the last to the first; the column mix moves in front of the
    // key, so that both directions have the same steps.
    const auto columns = static_cast<std::size_t>(nb);
    const auto rounds = static_cast<std::size_t>(nr_);
    for (std::size_t round = 0; round <= rounds; ++round) {
        const bool mixed = round != 0 && round != rounds;
        for (std::size_t column = 0; column < columns; ++column) {
            const quint32 word = forwardKey_[(rounds - round) * columns + column];
            inverseKey_[round * columns + column] = mixed ? Unmix(word) : word;
        }
    }
}

quint32 CRijndael::Substitute(quint32 word) const {
    return Word(forwardSubstitution_[ByteOf(word, 0)], forwardSubstitution_[ByteOf(word, 1)],
                forwardSubstitution_[ByteOf(word, 2)], forwardSubstitution_[ByteOf(word, 3)]);
}

// The inverse column mix alone: the table's own substitution is undone beforehand.
quint32 CRijndael::Unmix(quint32 word) const {
    quint32 unmixed = 0;
    for (int row = 0; row < 4; ++row) {
        unmixed ^= std::rotl(inverseTable_[forwardSubstitution_[ByteOf(word, row)]], 8 * row);
    }
    return unmixed;
}

void CRijndael::Encrypt(std::span<quint8> buff) const {
    Transform(buff, forwardKey_, forwardTable_, forwardSubstitution_, forwardShifts_);
}

void CRijndael::Decrypt(std::span<quint8> buff) const {
    Transform(buff, inverseKey_, inverseTable_, inverseSubstitution_, inverseShifts_);
}

void CRijndael::Transform(std::span<quint8> buff, const Schedule& schedule, const RoundTable& table,
                          const ByteTable& substitution, const ShiftTable& shifts) const {
    const auto columns = static_cast<std::size_t>(nb_);
    if (columns == 0 || buff.size() < 4 * columns) {
        throw Erro(Erro::InvalidArgument);
    }
    std::array<quint32, MaxWords> state = {};
    std::array<quint32, MaxWords> next = {};
    const WipeAtEnd withoutState(state);
    const WipeAtEnd withoutNext(next);
    const quint32* key = schedule.data();
    for (std::size_t column = 0; column < columns; ++column) {
        state[column] = qFromLittleEndian<quint32>(buff.data() + 4 * column) ^ *key++;
    }

    // The byte that the row shift brings from another column.
    const auto shifted = [&](std::size_t column, int row) {
        const std::size_t from =
            row == 0 ? column : shifts[3 * column + static_cast<std::size_t>(row) - 1];
        return ByteOf(state[from], row);
    };
    for (qint32 round = 1; round < nr_; ++round) {
        for (std::size_t column = 0; column < columns; ++column) {
            next[column] = *key++;
            for (int row = 0; row < 4; ++row) {
                next[column] ^= std::rotl(table[shifted(column, row)], 8 * row);
            }
        }
        std::swap(state, next);
    }
    // The last round has no column mix.
    for (std::size_t column = 0; column < columns; ++column) {
        const quint32 word =
            Word(substitution[shifted(column, 0)], substitution[shifted(column, 1)],
                 substitution[shifted(column, 2)], substitution[shifted(column, 3)]);
        qToLittleEndian(word ^ *key++, buff.data() + 4 * column);
    }
}

void CRijndael::SetPassword(const QByteArray& bytPassword) {
    std::array<quint8, 4 * KeyWords> key = {};
    const WipeAtEnd withoutKey(key);
    const auto used = std::min(static_cast<std::size_t>(bytPassword.size()), key.size());
    std::memcpy(key.data(), bytPassword.constData(), used);
    gentables();
    gkey(BlockWords, KeyWords, key);
}

QByteArray CRijndael::EncryptData(const QByteArray& bytMessage, const QByteArray& bytPassword) {
    if (bytMessage.isEmpty() || bytPassword.isEmpty()) {
        return {};
    }
    SetPassword(bytPassword);
    const auto length = convert::Narrow<qint32>(bytMessage.size());
    const qsizetype blocks = (length + LengthBytes + BlockBytes - 1) / BlockBytes;
    QByteArray bytes(blocks * BlockBytes, '\0');
    qToLittleEndian(length, bytes.data());
    std::memcpy(bytes.data() + LengthBytes, bytMessage.constData(),
                static_cast<std::size_t>(length));
    for (qsizetype at = 0; at < bytes.size(); at += BlockBytes) {
        Encrypt(BlockAt(bytes, at));
    }
    return bytes;
}

QByteArray CRijndael::DecryptData(const QByteArray& bytIn, const QByteArray& bytPassword) {
    if (bytIn.isEmpty() || bytPassword.isEmpty() || bytIn.size() % BlockBytes != 0) {
        return {};
    }
    SetPassword(bytPassword);
    QByteArray bytes(bytIn.constData(), bytIn.size());
    const WipeAtEnd withoutClearText(bytes);
    for (qsizetype at = 0; at < bytes.size(); at += BlockBytes) {
        Decrypt(BlockAt(bytes, at));
    }
    const auto length = qFromLittleEndian<qint32>(bytes.constData());
    if (length > bytes.size() - LengthBytes) {
        return {};
    }
    if (length <= 0) {
        throw Erro(Erro::SubscriptOutOfRange);
    }
    return bytes.mid(LengthBytes, length);
}
