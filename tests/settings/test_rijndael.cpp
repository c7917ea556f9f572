#include "settings/rijndael.h"
#include "support/cases.h"

namespace {

std::span<quint8> Bytes(QByteArray& bytes) {
    return {reinterpret_cast<quint8*>(bytes.data()), static_cast<std::size_t>(bytes.size())};
}

void SetKey(CRijndael& cipher, int nb, QByteArray key) {
    cipher.gentables();
    cipher.gkey(nb, int(key.size() / 4), Bytes(key));
}

}  // namespace

struct TestRijndael : Fixture {};

TEST(TestRijndael, KnownAnswers) {
    for (const auto& [one] : Cases(TARVO_CASES "/rijndael.data")) {
        const QByteArray key = one.lines.at(0).toLatin1();
        const QByteArray text = one.lines.at(1).toLatin1();
        CRijndael cipher;
        SetKey(cipher, int(text.size() / 8), QByteArray::fromHex(key));
        QByteArray block = QByteArray::fromHex(text);
        cipher.Encrypt(Bytes(block));
        QCOMPARE(block.toHex(), one.lines.at(2).toLatin1());
        cipher.Decrypt(Bytes(block));
        QCOMPARE(block.toHex(), text);
    }
}

TEST(TestRijndael, RefusesWrongSizes) {
    QByteArray key(32, 'k');
    QByteArray block(31, 'b');
    CRijndael cipher;
    cipher.gentables();
    QCOMPARE(ErrorOf([&] { cipher.Encrypt(Bytes(block)); }), 5);
    for (const QSize size : {QSize(3, 8), QSize(9, 8), QSize(8, 3), QSize(8, 9)}) {
        QCOMPARE(ErrorOf([&] { cipher.gkey(size.width(), size.height(), Bytes(key)); }), 5);
    }
    QCOMPARE(ErrorOf([&] { cipher.gkey(8, 8, Bytes(key).first(31)); }), 5);
    cipher.gkey(8, 8, Bytes(key));
    QCOMPARE(ErrorOf([&] { cipher.Decrypt(Bytes(block)); }), 5);
}

// What counts of a password are its first 32 bytes; a shorter one is filled with zeros.
TEST(TestRijndael, Messages) {
    const QByteArray filled = QByteArray("p").leftJustified(32, '\0');
    for (const auto& [length, total] : {std::pair(1, 32), std::pair(28, 32), std::pair(29, 64)}) {
        const QByteArray message(length, 'm');
        const QByteArray bytes = CRijndael().EncryptData(message, "p");
        QCOMPARE(bytes.size(), total);
        QCOMPARE(CRijndael().EncryptData(message, filled + "x"), bytes);
        QCOMPARE(CRijndael().DecryptData(bytes, filled), message);
    }
}

TEST(TestRijndael, Refusals) {
    const QByteArray password(32, 'p');
    QCOMPARE(CRijndael().EncryptData({}, password) + CRijndael().EncryptData("m", {}), "");
    const QByteArray ofZeros = CRijndael().EncryptData("m", QByteArray(32, '\0'));
    QCOMPARE(CRijndael().DecryptData({}, password) + CRijndael().DecryptData(ofZeros, {}), "");
    QCOMPARE(CRijndael().DecryptData(QByteArray(31, 'c'), password), "");

    CRijndael cipher;
    SetKey(cipher, 8, password);
    for (const auto& [length, size, error] : {std::tuple("1c000000", 28, 0),
                                              {"1d000000", 0, 0},
                                              {"00000000", 0, 9},
                                              {"ffffffff", 0, 9}}) {
        QByteArray block = QByteArray::fromHex(length).leftJustified(32, 'x');
        cipher.Encrypt(Bytes(block));
        QByteArray message;
        QCOMPARE(ErrorOf([&] { message = CRijndael().DecryptData(block, password); }), error);
        QCOMPARE(message.size(), size);
    }
}
