#include "platform/erro.h"
#include "platform/secret.h"
#include "platform/system/paths.h"
#include "session/banco.h"
#include "session/global.h"
#include "settings/arquivo.h"
#include "settings/textocifrado.h"
#include "support/quickkeys.h"

#include <QCoreApplication>
#include <QFile>
#include <QRandomGenerator>
#include <QTextStream>

#include <cstdio>

// What a test of the settings cannot do in its own process:
//   write USER PASSWORD TIMES   writes the credentials so many times
//   read                        prints the three settings, or the number of the error
//   remains FOLDER              uses every secret once on the catalogue in FOLDER, then counts how
//                               often each can be found in this process's memory

using namespace Qt::StringLiterals;

namespace {

// Secrets are looked for in a form in which finding one means having found something else.
void Mask(QByteArray& bytes) {
    for (char& byte : bytes) {
        byte = static_cast<char>(byte ^ 0x55);
    }
}

struct Wanted {
    QString name;
    QByteArray utf8;  // both masked
    QByteArray utf16;
    qsizetype found = 0;
};

// A piece from the middle: the first bytes of memory that was given back are overwritten by chance.
Wanted Want(const QString& name, const QString& text) {
    const QStringView piece =
        QStringView(text).sliced(text.size() / 3, qMin<qsizetype>(text.size() / 2, 20));
    Wanted wanted{name, piece.toUtf8(),
                  QByteArray(reinterpret_cast<const char*>(piece.utf16()), piece.size() * 2)};
    Mask(wanted.utf8);
    Mask(wanted.utf16);
    return wanted;
}

void SearchMemory(QList<Wanted>& list) {
    constexpr qsizetype Chunk = 1 << 20;
    constexpr qsizetype Overlap = 256;
    QFile maps(u"/proc/self/maps"_s);
    QFile memory(u"/proc/self/mem"_s);
    if (!maps.open(QIODevice::ReadOnly) ||
        !memory.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        qFatal("cannot read the memory");
    }
    const QList<QByteArray> lines = maps.readAll().split('\n');
    QByteArray bytes;
    bytes.reserve(Chunk);
    for (const QByteArray& line : lines) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() < 2 || !fields.at(1).startsWith('r') || line.contains("[v")) {
            continue;
        }
        const QList<QByteArray> range = fields.first().split('-');
        const quint64 end = range.at(1).toULongLong(nullptr, 16);
        for (quint64 at = range.at(0).toULongLong(nullptr, 16); at < end; at += Chunk - Overlap) {
            bytes.resize(qMin<qint64>(Chunk, qint64(end - at)));
            if (!memory.seek(qint64(at)) ||
                memory.read(bytes.data(), bytes.size()) != bytes.size()) {
                continue;
            }
            Mask(bytes);
            for (Wanted& wanted : list) {
                wanted.found += bytes.count(wanted.utf8) + bytes.count(wanted.utf16);
            }
        }
    }
}

// Longer than what memory that is in use all the time is given back as.
QString RandomText() {
    constexpr int Length = 3000;
    QString text;
    text.reserve(Length);
    for (int i = 0; i < Length; ++i) {
        text += QChar(static_cast<char16_t>(QRandomGenerator::system()->bounded(u'a', u'z' + 1)));
    }
    return text;
}

void Remains(const QString& folder) {
    gCaminho = folder + u'\\';
    AbrirBancoDados(gWS, u"gWS"_s, gDB, false);
    GravarUltimaVerificacao(QString(), u"0"_s);

    QString proxyPassword = RandomText();
    GravarConfiguracao(QString(), u"usuario"_s, proxyPassword, true);
    QString user;
    QString read;
    LerConfiguracao(u"USUARIO_SENHA"_s, user, read);
    const bool same = read == proxyPassword;
    secret::Wipe(read);

    QString planted = RandomText();  // proves that the search finds what is there
    QList<Wanted> list = {Want(u"planted"_s, planted), Want(u"proxy"_s, proxyPassword)};
    secret::Wipe(proxyPassword);
    QString password = SenhaBancoDados();
    list += Want(u"password"_s, password);
    secret::Wipe(password);
    QString phrase = FraseCifra();
    list += Want(u"phrase"_s, phrase);
    secret::Wipe(phrase);

    SearchMemory(list);
    QTextStream out(stdout);
    out << "same " << int(same) << '\n';
    for (const Wanted& wanted : list) {
        out << wanted.name << ' ' << wanted.found << '\n';
    }
    FecharBancoDados(gWS, gDB);
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    testing_support::UseQuickKeys();
    const QString command = arguments.value(0);
    try {
        if (command == "write"_L1) {
            for (int i = 0; i < arguments.at(3).toInt(); ++i) {
                GravarConfiguracao(QString(), arguments.at(1), arguments.at(2), true);
            }
        } else if (command == "read"_L1) {
            QString user;
            QString password;
            LerConfiguracao(u"VERIFICACAOAUTOMATICA"_s, user, password);
            LerConfiguracao(u"USUARIO_SENHA"_s, user, password);
            QTextStream(stdout) << int(VerificacaoAutomatica) << '|' << user << '|' << password;
        } else if (command == "remains"_L1) {
            Remains(arguments.at(1));
        } else {
            return 2;
        }
    } catch (const Erro& erro) {
        QTextStream(stdout) << "erro " << erro.Number();
    }
    return 0;
}
