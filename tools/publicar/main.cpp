#include "platform/erro.h"
#include "platform/system/usage.h"
#include "publicar/publish.h"
#include "publicar/signing.h"
#include "verificar/report.h"

#include <QCoreApplication>
#include <QDir>

#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

enum Outcome { Done = 0, Faulty = 1, NotChecked = 2 };

const QString Use =
    u"Uso: tarvo-publicar <pasta> --release n --catalogue <pasta de dados> [opções]\n"
    "     tarvo-publicar --new-key <pasta> --site-name <nome>\n"
    "     tarvo-publicar --sign-again --site <pasta> --key <arquivo>\n"
    "\n"
    "Confere uma nova versão dos dados do Catálogo TARVO-LINDEN e a publica. A pasta\n"
    "contém o que a versão traz, disposto como na pasta de dados; o que termina em\n"
    ".sdb é um script. Os scripts são executados numa cópia do catálogo indicado.\n"
    "\n"
    "  --release n          número da nova versão\n"
    "  --catalogue <pasta>  pasta de dados na versão anterior; nada nela é alterado\n"
    "  --site <pasta>       pasta do servidor; sem ela, só confere\n"
    "  --key <arquivo>      chave secreta com que se assina; pode vir mais de uma vez\n"
    "  --program <nome>     arquivo que é iniciado depois da atualização\n"
    "  --keep <pasta>       guarda ali o catálogo já atualizado, para a próxima versão\n"
    "  --replace            publica de novo uma versão já publicada\n"
    "  --examples n         exemplos mostrados de cada caso (padrão: 20)\n"
    "  --new-key <pasta>    cria ali uma chave secreta e o arquivo de chaves dos clientes\n"
    "  --site-name <nome>   nome de quem publica, igual em todas as suas chaves\n"
    "  --sign-again         assina de novo, com a data de hoje, tudo o que o servidor tem\n"
    "  --version            mostra a versão deste programa\n"
    "  --help               mostra esta ajuda\n"
    "\n"
    "Código de saída: 0 publicada ou sem erros, 1 com erros (nada é publicado),\n"
    "2 quando não foi possível conferir ou publicar.\n"_s;

QString Folder(const QString& path) {
    return path.isEmpty() ? path : QDir::cleanPath(QDir(path).absolutePath());
}

// Takes the value behind an option out of the arguments; null when the option is not there.
QString TakeValue(QStringList& arguments, const QString& option) {
    const qsizetype at = arguments.indexOf(option);
    if (at < 0 || at + 1 >= arguments.size()) {
        return {};
    }
    const QString value = arguments.at(at + 1);
    arguments.remove(at, 2);
    return value;
}

std::vector<publicar::Signer> TakeSigners(QStringList& arguments) {
    std::vector<publicar::Signer> signers;
    for (QString key; !(key = TakeValue(arguments, u"--key"_s)).isNull();) {
        signers.push_back(publicar::ReadSigner(QDir(key).absolutePath()));
    }
    return signers;
}

// The two orders that are about keys; nothing for any other.
std::optional<int> RunKeyOrder(QStringList arguments) {
    if (const QString folder = TakeValue(arguments, u"--new-key"_s); !folder.isNull()) {
        const QString name = TakeValue(arguments, u"--site-name"_s);
        if (!arguments.isEmpty()) {
            return std::nullopt;
        }
        publicar::MakeKey(Folder(folder), name);
        sys::Print(stdout, u"Chave criada em \"%1\".\n"_s.arg(Folder(folder)));
        return Done;
    }
    if (arguments.removeAll(u"--sign-again"_s) == 0) {
        return std::nullopt;
    }
    const QString site = Folder(TakeValue(arguments, u"--site"_s));
    const auto signers = TakeSigners(arguments);
    if (!arguments.isEmpty() || site.isEmpty() || signers.empty()) {
        return std::nullopt;
    }
    publicar::SignAgain(site, signers);
    sys::Print(stdout, u"Assinado de novo: \"%1\".\n"_s.arg(site));
    return Done;
}

std::optional<publicar::Order> ReadOrder(QStringList arguments) {
    publicar::Order order;
    bool release = false;
    order.release = TakeValue(arguments, u"--release"_s).toInt(&release);
    order.catalogue = Folder(TakeValue(arguments, u"--catalogue"_s));
    order.site = Folder(TakeValue(arguments, u"--site"_s));
    order.keep = Folder(TakeValue(arguments, u"--keep"_s));
    for (QString name; !(name = TakeValue(arguments, u"--program"_s)).isNull();) {
        order.programs += name.replace(u'/', u'\\');
    }
    order.signers = TakeSigners(arguments);
    order.replace = arguments.removeAll(u"--replace"_s) > 0;
    bool examples = true;
    if (const QString value = TakeValue(arguments, u"--examples"_s); !value.isNull()) {
        order.examples = value.toInt(&examples);
    }
    if (!release || order.release < 1 || order.release > publicar::LastRelease || !examples ||
        order.examples < 0 || order.catalogue.isEmpty() || arguments.size() != 1 ||
        arguments.first().startsWith(u'-')) {
        return std::nullopt;
    }
    order.folder = Folder(arguments.first());
    return order;
}

int Run(const publicar::Order& order) {
    QList<verificar::Finding> findings;
    const std::vector<publicar::File> files = publicar::ReadFolder(order, findings);
    findings += publicar::Check(order, files);
    sys::Print(
        stdout,
        u"Versão %1: %2 arquivos em %3\n"_s.arg(order.release).arg(files.size()).arg(order.folder) +
            verificar::Report(order.catalogue, findings));
    if (verificar::HasFault(findings)) {
        return Faulty;
    }
    if (!order.site.isEmpty()) {
        publicar::Publish(order, files);
        sys::Print(stdout,
                   u"Versão %1 publicada em \"%2\".\n"_s.arg(order.release).arg(order.site));
    }
    return Done;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (sys::AnswerUsage(arguments, u"tarvo-publicar"_s, Use)) {
        return Done;
    }
    try {
        if (const auto outcome = RunKeyOrder(arguments)) {
            return *outcome;
        }
        const auto order = ReadOrder(arguments);
        if (!order) {
            sys::Print(stderr, Use);
            return NotChecked;
        }
        return Run(*order);
    } catch (const Erro& erro) {
        sys::Print(stderr, u"tarvo-publicar: %1\n"_s.arg(erro.Description()));
        return NotChecked;
    }
}
