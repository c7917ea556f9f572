#include "platform/erro.h"
#include "platform/system/usage.h"
#include "publicar/publish.h"
#include "verificar/report.h"

#include <QCoreApplication>
#include <QDir>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

enum Outcome { Done = 0, Faulty = 1, NotChecked = 2 };

const QString Use =
    u"Uso: tarvo-publicar <pasta> --release n --catalogue <pasta de dados> [opções]\n"
    "\n"
    "Confere uma nova versão dos dados do Catálogo TARVO-LINDEN e a publica. A pasta\n"
    "contém o que a versão traz, disposto como na pasta de dados; o que termina em\n"
    ".sdb é um script. Os scripts são executados numa cópia do catálogo indicado.\n"
    "\n"
    "  --release n          número da nova versão\n"
    "  --catalogue <pasta>  pasta de dados na versão anterior; nada nela é alterado\n"
    "  --site <pasta>       pasta do servidor; sem ela, só confere\n"
    "  --program <nome>     arquivo que é iniciado depois da atualização\n"
    "  --keep <pasta>       guarda ali o catálogo já atualizado, para a próxima versão\n"
    "  --replace            publica de novo uma versão já publicada\n"
    "  --examples n         exemplos mostrados de cada caso (padrão: 20)\n"
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
    const auto order = ReadOrder(arguments);
    if (!order) {
        sys::Print(stderr, Use);
        return NotChecked;
    }
    try {
        return Run(*order);
    } catch (const Erro& erro) {
        sys::Print(stderr, u"tarvo-publicar: %1\n"_s.arg(erro.Description()));
        return NotChecked;
    }
}
