#include "importar/import.h"
#include "platform/erro.h"
#include "platform/system/usage.h"
#include "tabelas/interrupt.h"

#include <QCoreApplication>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

enum Result { AllIn = 0, SomeRefused = 1, NotMade = 2 };

const QString Use =
    u"Uso: tarvo-importar <origem> <pasta> [opções]\n"
    "     tarvo-importar <origem> --conferir [opções]\n"
    "     tarvo-importar --modelos <pasta>\n"
    "\n"
    "Faz uma pasta de dados do Catálogo TARVO-LINDEN. A origem é um catálogo antigo\n"
    "(.mdb dos formatos 97 a 2003) ou uma pasta de arquivos CSV, um por tabela. A\n"
    "pasta deve ser nova ou vazia; ela aparece inteira ou não aparece.\n"
    "\n"
    "  --conferir          diz o que aconteceria, sem gravar nada\n"
    "  --tudo-ou-nada      com linhas recusadas, nada é criado\n"
    "  --recusadas arquivo onde ficam as linhas recusadas (padrão: recusadas.csv na\n"
    "                      pasta nova ou, se nada é criado, ao lado dela)\n"
    "  --sem-figuras       não copia FotoPeca, Figuras e a ajuda que estão junto da\n"
    "                      origem\n"
    "  --exemplos n        exemplos mostrados de cada caso (padrão: 5)\n"
    "  --modelos pasta     grava numa pasta nova os arquivos CSV vazios, com títulos\n"
    "                      e uma linha de explicação\n"
    "  --versao            mostra a versão\n"
    "  --ajuda             mostra esta ajuda\n"
    "\n"
    "Código de saída: 0 tudo entrou, 1 linhas foram recusadas, 2 nada foi feito.\n"_s;

// Takes an option and its value out of the arguments; false when the value is missing.
bool TakeValue(QStringList& arguments, const QString& option, QString& value) {
    const qsizetype at = arguments.indexOf(option);
    if (at < 0) {
        return true;
    }
    value = arguments.value(at + 1);
    arguments.remove(at, std::min<qsizetype>(2, arguments.size() - at));
    return !value.isEmpty() && !value.startsWith(u"--"_s);
}

std::optional<importar::Order> ReadOrder(QStringList arguments) {
    importar::Order order;
    QString examples = QString::number(order.examples);
    if (!TakeValue(arguments, u"--recusadas"_s, order.refused) ||
        !TakeValue(arguments, u"--exemplos"_s, examples)) {
        return std::nullopt;
    }
    bool number = false;
    order.examples = examples.toInt(&number);
    order.check = arguments.removeAll(u"--conferir"_s) > 0;
    order.allOrNothing = arguments.removeAll(u"--tudo-ou-nada"_s) > 0;
    order.pictures = arguments.removeAll(u"--sem-figuras"_s) == 0;
    const qsizetype wanted = order.check ? 1 : 2;
    const bool options = std::any_of(arguments.begin(), arguments.end(),
                                     [](const QString& each) { return each.startsWith(u'-'); });
    if (!number || order.examples < 0 || options || arguments.size() != wanted) {
        return std::nullopt;
    }
    order.from = arguments.first();
    order.folder = order.check ? QString() : arguments.last();
    return order;
}

Result Run(const importar::Order& order) {
    const auto show = tabelas::OnTerminal();
    tabelas::Progress progress(show);
    const auto outcome = importar::Import(order, progress);
    if (show) {
        show({});
    }
    sys::Print(stdout, importar::Report(order, outcome));
    if (!outcome.made && !order.check) {
        return NotMade;
    }
    return outcome.refused > 0 ? SomeRefused : AllIn;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (sys::AnswerUsage(arguments, u"tarvo-importar"_s, Use)) {
        return AllIn;
    }
    const bool models = arguments.size() == 2 && arguments.first() == u"--modelos"_s;
    const auto order = models ? std::nullopt : ReadOrder(arguments);
    if (!order && !models) {
        sys::Print(stderr, Use);
        return NotMade;
    }
    try {
        tabelas::WatchForInterrupt();
        if (models) {
            importar::WriteModels(arguments.last());
            sys::Print(stdout, u"Modelos gravados em \"%1\".\n"_s.arg(arguments.last()));
            return AllIn;
        }
        return Run(*order);
    } catch (const Erro& erro) {
        sys::Print(stderr, u"tarvo-importar: %1\n"_s.arg(erro.Description()));
        return NotMade;
    }
}
