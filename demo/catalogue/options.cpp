#include "options.h"

#include "catalogue.h"
#include "crossreferences.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

constexpr char16_t Help[] =
    uR"(Uso: tarvo-demo <pasta> [opções]

Cria na pasta indicada os dados de demonstração do Catálogo TARVO-LINDEN:
o catálogo (Tarvo.mdb), as pastas de figuras e fotos e o arquivo de ajuda.
Com a mesma semente e as mesmas quantidades, o conteúdo é sempre o mesmo.

Opções:
  --seed n         semente dos dados (padrão: 1)
  --parts n        quantidade de peças (padrão: 3000)
  --components n   quantidade de componentes (padrão: 9000)
  --kits n         quantidade de jogos de reparo (padrão: 1200)
  --vehicles n     quantidade de veículos (padrão: 600)
  --crossrefs n    quantidade de referências cruzadas (padrão: 40000)
  --pictures p     all, small (fotos pequenas) ou none, que também
                   não faz figuras (padrão: all)
  --update-site p  cria na pasta p um servidor de atualizações, com as versões 2
                   e 3; se o catálogo já existe, com as mesmas quantidades e
                   na versão 1, só isso é feito
  --overwrite      substitui o catálogo que já existe na pasta
  --version        mostra a versão
  --help           mostra esta ajuda
)";

struct SizeOption {
    QLatin1StringView name;
    quint32 Sizes::*size;
    quint32 least;
};
constexpr std::array<SizeOption, 4> sizeOptions{{
    {"--parts"_L1, &Sizes::parts, 1},
    {"--components"_L1, &Sizes::components, 1},
    {"--kits"_L1, &Sizes::kits, 0},
    {"--vehicles"_L1, &Sizes::vehicles, 0},
}};

// The number behind an option, within its limits.
class Numbers {
public:
    Numbers(const QString& option, const QString& value) : option_(option), value_(value) {}

    QString Read(quint64 least, quint64 most, auto& target) const {
        bool whole = false;
        const quint64 number = value_.toULongLong(&whole);
        if (!whole || number < least || number > most) {
            return u"A opção %1 precisa de um número inteiro de %2 a %3."_s.arg(option_)
                .arg(least)
                .arg(most);
        }
        target = static_cast<std::remove_reference_t<decltype(target)>>(number);
        return {};
    }

private:
    QString option_;
    QString value_;
};

struct PicturesWord {
    QLatin1StringView word;
    Pictures pictures;
};
constexpr std::array<PicturesWord, 3> picturesWords{{
    {"all"_L1, Pictures::All},
    {"small"_L1, Pictures::Small},
    {"none"_L1, Pictures::None},
}};

quint32 MostCrossReferences(const Sizes& sizes) {
    const quint64 numbers = static_cast<quint64>(sizes.parts) + sizes.components + sizes.kits;
    return static_cast<quint32>(numbers * CompanyCount());
}

QString ReadPictures(const QString& value, Order& order) {
    const auto found = std::find_if(picturesWords.begin(), picturesWords.end(),
                                    [&value](const PicturesWord& p) { return p.word == value; });
    if (found == picturesWords.end()) {
        return u"A opção --pictures precisa de all, small ou none."_s;
    }
    order.pictures = found->pictures;
    return {};
}

QString ReadValue(const QString& option, const QString& value, Order& order) {
    if (option == "--update-site"_L1) {
        order.updateSite = value;
        return value.isEmpty() ? u"A opção --update-site precisa de uma pasta."_s : QString();
    }
    if (option == "--pictures"_L1) {
        return ReadPictures(value, order);
    }
    const Numbers number(option, value);
    if (option == "--seed"_L1) {
        return number.Read(0, std::numeric_limits<quint64>::max(), order.seed);
    }
    if (option == "--crossrefs"_L1) {
        return number.Read(0, std::numeric_limits<quint32>::max(), order.sizes.crossReferences);
    }
    const auto found = std::find_if(sizeOptions.begin(), sizeOptions.end(),
                                    [&option](const SizeOption& o) { return o.name == option; });
    if (found == sizeOptions.end()) {
        return u"Opção desconhecida: %1."_s.arg(option);
    }
    return number.Read(found->least, MostRows, order.sizes.*(found->size));
}

}  // namespace

std::variant<Order, ShowText, Complaint> ReadOptions(const QStringList& arguments) {
    Order order;
    bool crossReferencesGiven = false;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (*argument == "--help"_L1) {
            return ShowText{QString::fromUtf16(Help)};
        }
        if (*argument == "--version"_L1) {
            return ShowText{u"tarvo-demo " TARVO_VERSION "\n"_s};
        }
        if (*argument == "--overwrite"_L1) {
            order.overwrite = true;
        } else if (argument->startsWith(u'-')) {
            const QString option = *argument;
            const bool last = std::next(argument) == arguments.end();
            const QString value = last ? QString() : *++argument;
            if (const QString wrong = ReadValue(option, value, order); !wrong.isEmpty()) {
                return Complaint{wrong};
            }
            crossReferencesGiven |= option == "--crossrefs"_L1;
        } else if (order.folder.isEmpty()) {
            order.folder = *argument;
        } else {
            return Complaint{u"Informe uma só pasta."_s};
        }
    }
    if (order.folder.isEmpty()) {
        return Complaint{u"Informe a pasta de dados."_s};
    }
    const quint32 most = MostCrossReferences(order.sizes);
    if (order.sizes.crossReferences > most) {
        if (crossReferencesGiven) {
            return Complaint{
                u"Com essas quantidades cabem no máximo %1 referências cruzadas."_s.arg(most)};
        }
        order.sizes.crossReferences = most;
    }
    return order;
}

}  // namespace demo
