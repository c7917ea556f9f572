#include "platform/secret.h"
#include "session/banco.h"
#include "session/global.h"
#include "settings/arquivo.h"
#include "settings/textocifrado.h"
#include "support/quickkeys.h"
#include "support/test.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTextStream>

// What a test of the settings cannot do in its own process:
//   write USER PASSWORD TIMES   writes the credentials so many times
//   read                        prints the three settings, or the number of the error
//   remains FOLDER              uses every secret once on the catalogue in FOLDER, then counts how
//                               often each can be found in this process's memory

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
    QFile maps(u"/proc/self/maps"_s);
    QFile memory(u"/proc/self/mem"_s);
    if (!maps.open(QIODevice::ReadOnly) ||
        !memory.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        qFatal("cannot read the memory");
    }
    static const QRegularExpression readable(u"^(\\w+)-(\\w+) r(?!.*\\[v)"_s,
                                             QRegularExpression::MultilineOption);
    const QString lines = QString::fromUtf8(maps.readAll());
    for (const auto& range : readable.globalMatch(lines)) {
        const qint64 begin = range.captured(1).toLongLong(nullptr, 16);
        memory.seek(begin);
        QByteArray bytes = memory.read(range.captured(2).toLongLong(nullptr, 16) - begin);
        Mask(bytes);
        for (Wanted& wanted : list) {
            wanted.found += bytes.count(wanted.utf8) + bytes.count(wanted.utf16);
        }
    }
}

// Longer than what memory that is in use all the time is given back as.
QString RandomText() {
    constexpr int Length = 3000;
    QString text(Length, u' ');
    for (QChar& letter : text) {
        letter = QChar(QRandomGenerator::system()->bounded(u'a', u'z' + 1));
    }
    return text;
}

void Remains(const QString& folder, QTextStream& out) {
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
    out << "same " << int(same) << '\n';
    for (const Wanted& wanted : list) {
        out << wanted.name << ' ' << wanted.found << '\n';
    }
    FecharBancoDados(gWS, gDB);
}

int Play(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    UseQuickKeys();
    QTextStream out(stdout);
    try {
        if (arguments.first() == "write"_L1) {
            for (int i = 0; i < arguments.at(3).toInt(); ++i) {
                GravarConfiguracao(QString(), arguments.at(1), arguments.at(2), true);
            }
        } else if (arguments.first() == "read"_L1) {
            QString user;
            QString password;
            LerConfiguracao(u"VERIFICACAOAUTOMATICA"_s, user, password);
            LerConfiguracao(u"USUARIO_SENHA"_s, user, password);
            out << int(VerificacaoAutomatica) << '|' << user << '|' << password;
        } else {
            Remains(arguments.at(1), out);
        }
    } catch (const Erro& erro) {
        out << "erro " << erro.Number();
    }
    return 0;
}

}  // namespace

TARVO_PROGRAM("vizinho", Play);
