#include "platform/erro.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString DescriptionOf(Erro::Code code) {
    switch (code) {
        case Erro::InvalidArgument:
            return u"Chamada de procedimento ou argumento inválido"_s;
        case Erro::Overflow:
            return u"Estouro"_s;
        case Erro::SubscriptOutOfRange:
            return u"Subscrito fora do intervalo"_s;
        case Erro::TypeMismatch:
            return u"Tipos incompatíveis"_s;
        case Erro::InternalError:
            return u"Erro interno"_s;
        case Erro::FileNotFound:
            return u"Arquivo não encontrado"_s;
        case Erro::DiskFull:
            return u"Disco cheio"_s;
        case Erro::PermissionDenied:
            return u"Permissão negada"_s;
        case Erro::PathFileAccess:
            return u"Erro de acesso ao caminho/arquivo"_s;
        case Erro::PathNotFound:
            return u"Caminho não encontrado"_s;
        case Erro::InvalidUseOfNull:
            return u"Uso de Nulo inválido"_s;
        case Erro::InvalidPicture:
            return u"Figura inválida"_s;
        case Erro::PrinterError:
            return u"Erro de impressora"_s;
        case Erro::Cancelled:
            return u"Cancelar foi selecionado"_s;
    }
    return u"Erro desconhecido"_s;
}

}  // namespace

Erro::Erro(Code code) : Erro(code, DescriptionOf(code)) {}

Erro::Erro(int number, QString description)
    : number_(number), description_(std::move(description)), utf8_(description_.toUtf8()) {}
