#include "settings/rijndael.h"
#include "support/test.h"

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

// FIPS 197, appendix C; the other sizes from the known answers of Gladman's collection, which
// take the digits of pi as text and those of e as key. Each is called by the words of its block and
// of its key.
TEST(TestRijndael, KnownAnswers) {
    const QByteArray count = "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f";
    const QByteArray elevens = "00112233445566778899aabbccddeeff";
    const QByteArray pi = "3243f6a8885a308d313198a2e03707344a4093822299f31d0082efa98ec4e6c8";
    const QByteArray e = "2b7e151628aed2a6abf7158809cf4f3c762e7160f38b4da56a784d9045190cfe";
    for (const auto& [key, text, answer] : Each<QByteArray, QByteArray, QByteArray>{
             {"4, 4", count.first(32), elevens, "69c4e0d86a7b0430d8cdb78070b4c55a"},
             {"4, 6", count.first(48), elevens, "dda97ca4864cdfe06eaf70a0ec0d7191"},
             {"4, 8", count, elevens, "8ea2b7ca516745bfeafc49904b496089"},
             {"5, 5", e.first(40), pi.first(40), "0553eb691670dd8a5a5b5addf1aa7450f7a0e587"},
             {"6, 7", e.first(56), pi.first(48),
              "bbfc14180afbf6a36382a061843f0b63e769acdc98769130"},
             {"8, 4", e.first(32), pi,
              "7d15479076b69a46ffb3b3beae97ad8313f622f67fedb487de9f06b9ed9c8f19"},
             {"8, 8", e, pi, "a49406115dfb30a40418aafa4869b7c6a886ff31602a7dd19c889dc64f7e4e7a"},
         }) {
        CRijndael cipher;
        SetKey(cipher, int(text.size() / 8), QByteArray::fromHex(key));
        QByteArray block = QByteArray::fromHex(text);
        cipher.Encrypt(Bytes(block));
        QCOMPARE(block.toHex(), answer);
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
