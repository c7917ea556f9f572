#include "platform/system/proof.h"
#include "support/test.h"

namespace {

QByteArray Bytes(const char* hexadecimal) {
    return QByteArray::fromHex(hexadecimal);
}

}  // namespace

struct TestProof : Fixture {};

// The example of FIPS 180-4, and a file of several blocks by another implementation
// (sha256sum).
TEST(TestProof, Hashes) {
    const QTemporaryDir folder;
    Write(folder.filePath(u"abc"_s), "abc");
    QCOMPARE(sys::HashOfFile(folder.filePath(u"abc"_s)),
             Bytes("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"));
    Write(folder.filePath(u"muitos"_s), QByteArray(1'000'000, 'a'));
    QCOMPARE(sys::HashOfFile(folder.filePath(u"muitos"_s)),
             Bytes("cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"));
    QCOMPARE(ErrorOf([&] { sys::HashOfFile(folder.filePath(u"nada"_s)); }), 53);
    QCOMPARE(ErrorOf([&] { sys::HashOfFile(folder.path()); }), 75);
}

// RFC 8032, section 7.1, test 3.
TEST(TestProof, Signature) {
    const QByteArray secret =
        Bytes("c5aa8df43f9f837bedb7442f31dcb7b166d38535076f094b85ce3a2e0b4458f7");
    const QByteArray open =
        Bytes("fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025");
    const QByteArray signature = Bytes(
        "6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac"
        "18ff9b538d16f290ae67f760984dc6594a7c15e9716ed28dc027beceea1ec40a");
    QCOMPARE(sys::OpenKeyOf(secret), open);
    QCOMPARE(sys::Sign(Bytes("af82"), secret), signature);
    QVERIFY(sys::IsSigned(Bytes("af82"), signature, open));
    QVERIFY(!sys::IsSigned(Bytes("af83"), signature, open));
    QVERIFY(!sys::IsSigned(Bytes("af82"), signature.first(63), open));
    QVERIFY(!sys::IsSigned(Bytes("af82"), signature, open.first(31)));
    QCOMPARE(ErrorOf([&] { sys::Sign("a", secret.first(31)); }), 5);
}

TEST(TestProof, NewKeys) {
    const sys::KeyPair pair = sys::NewKeyPair();
    QCOMPARE(sys::OpenKeyOf(pair.secret), pair.open);
    QVERIFY(sys::NewKeyPair().open != pair.open);
}
