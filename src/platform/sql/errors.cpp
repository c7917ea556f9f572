#include "platform/sql/errors.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace sql {

namespace {

struct Entry {
    Failure failure;
    const char* text;  // without the full stop, so that a detail can follow
};

constexpr Entry Texts[] = {
    {Failure::NotSupported, "O comando usa um recurso que este catálogo não oferece"},
    {Failure::TableExists, "Já existe uma tabela com este nome"},
    {Failure::ObjectExists, "Já existe um arquivo, índice ou consulta com este nome"},
    {Failure::NoCurrentRecord, "Não há registro atual"},
    {Failure::DuplicateKey, "A gravação criaria valores repetidos em um índice sem repetições"},
    {Failure::FileNotFound, "O arquivo do catálogo não foi encontrado"},
    {Failure::ReadOnly,
     "Não é possível gravar: o catálogo, ou a pasta em que ele está, permite somente leitura"},
    {Failure::WrongPassword, "A senha do catálogo não confere"},
    {Failure::NoTransaction, "Não há transação aberta para confirmar ou desfazer"},
    {Failure::Resources, "O comando precisa de memória demais"},
    {Failure::InOut, "Falha de leitura ou gravação no disco ou na rede"},
    {Failure::PathNotFound, "A pasta do catálogo não existe ou não está acessível"},
    {Failure::Damaged, "O catálogo está danificado e não pode ser lido"},
    {Failure::CannotOpen, "Sem permissão para abrir o arquivo do catálogo"},
    {Failure::Interrupted, "Operação interrompida"},
    {Failure::UnknownColumn, "Campo desconhecido"},
    {Failure::NotAnAction,
     "Uma consulta que devolve registros não pode ser executada como comando"},
    {Failure::SyntaxError, "Erro de sintaxe no comando"},
    {Failure::UnknownTable, "A tabela ou consulta não foi encontrada"},
    {Failure::AmbiguousColumn, "O campo existe em mais de uma das tabelas do comando"},
    {Failure::UnknownFunction, "Função desconhecida no comando"},
    {Failure::BadPattern, "O padrão de pesquisa é inválido"},
    {Failure::MissingExpression, "O texto do comando está vazio ou não é um comando"},
    {Failure::DiskFull, "Não há espaço no disco"},
    {Failure::NotGrouped, "O campo não está em GROUP BY nem em uma função de totais"},
    {Failure::TextTooLong, "O texto é longo demais para o campo"},
    {Failure::NotUpdatable, "Os dados não podem ser gravados em uma consulta"},
    {Failure::MixedComparison, "O comando compara um texto com um número"},
    {Failure::DuplicateColumn, "O campo foi definido mais de uma vez"},
    {Failure::InvalidOperation, "Operação inválida neste objeto"},
    {Failure::Locked, "O catálogo está bloqueado por outro computador ou outro programa"},
    {Failure::ItemNotFound, "O campo não existe neste conjunto de registros"},
    {Failure::NotNull, "O campo não pode ficar sem valor"},
    {Failure::CheckViolated, "O valor não é permitido pela regra de validação"},
    {Failure::NotACatalogue, "O arquivo não é um catálogo"},
    {Failure::ValueCount, "O número de valores não é igual ao número de campos"},
    {Failure::ObjectInvalid, "O objeto já foi fechado e não pode mais ser usado"},
};

}  // namespace

void Throw(Failure failure, const QString& detail) {
    const auto* entry = std::find_if(std::begin(Texts), std::end(Texts),
                                     [failure](const Entry& e) { return e.failure == failure; });
    QString text = entry == std::end(Texts) ? u"Falha no acesso ao catálogo"_s
                                            : QString::fromUtf8(entry->text);
    if (!detail.isEmpty()) {
        text += ": "_L1 + detail;
    }
    throw Erro(static_cast<int>(failure), text + u'.');
}

}  // namespace sql
