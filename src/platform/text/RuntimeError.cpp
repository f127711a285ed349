#include "RuntimeError.h"

#include <utility>

namespace {

QString publishedDescription(int number)
{
    switch (number) {
    case RuntimeError::InvalidCall:
        return QStringLiteral("Chamada de procedimento ou argumento inválido");
    case RuntimeError::Overflow:
        return QStringLiteral("Estouro");
    case RuntimeError::SubscriptOutOfRange:
        return QStringLiteral("Subscrito fora do intervalo");
    case RuntimeError::DivisionByZero:
        return QStringLiteral("Divisão por zero");
    case RuntimeError::TypeMismatch:
        return QStringLiteral("Tipos incompatíveis");
    case RuntimeError::FileNotFound:
        return QStringLiteral("Arquivo não encontrado");
    case RuntimeError::FileAlreadyOpen:
        return QStringLiteral("O arquivo já está aberto");
    case RuntimeError::DeviceIo:
        return QStringLiteral("Erro de E/S de dispositivo");
    case RuntimeError::FileAlreadyExists:
        return QStringLiteral("O arquivo já existe");
    case RuntimeError::DiskFull:
        return QStringLiteral("Disco cheio");
    case RuntimeError::DeviceUnavailable:
        return QStringLiteral("Dispositivo não disponível");
    case RuntimeError::PermissionDenied:
        return QStringLiteral("Permissão negada");
    case RuntimeError::PathFileAccess:
        return QStringLiteral("Erro de acesso ao caminho/arquivo");
    case RuntimeError::PathNotFound:
        return QStringLiteral("Caminho não encontrado");
    case RuntimeError::ObjectNotSet:
        return QStringLiteral("A variável do objeto ou a variável do bloco With não foi definida");
    case RuntimeError::InvalidNull:
        return QStringLiteral("Uso inválido de Null");
    case RuntimeError::NoSuchArrayElement:
        return QStringLiteral("O elemento da matriz de controles não existe");
    case RuntimeError::ObjectWasUnloaded:
        return QStringLiteral("O objeto foi descarregado");
    case RuntimeError::InvalidPropertyValue:
        return QStringLiteral("Valor de propriedade inválido");
    case RuntimeError::InvalidPropertyIndex:
        return QStringLiteral("Índice de matriz de propriedade inválido");
    case RuntimeError::AlreadyDisplayed:
        return QStringLiteral("Formulário já exibido; não é possível exibi-lo como modal");
    case RuntimeError::ModalFormDisplayed:
        return QStringLiteral(
            "Não é possível exibir formulário não-modal quando há um formulário modal");
    case RuntimeError::CloseTopmostModalFirst:
        return QStringLiteral("Feche ou oculte primeiro o formulário modal superior");
    case RuntimeError::PrinterFault:
        return QStringLiteral("Erro de impressora");
    case RuntimeError::WrongArguments:
        return QStringLiteral("Os argumentos são do tipo errado, estão fora do intervalo aceitável "
                              "ou estão em conflito.");
    case RuntimeError::NoCurrentRecord:
        return QStringLiteral("BOF ou EOF é verdadeiro ou o registro atual foi excluído. "
                              "A operação solicitada requer um registro atual.");
    case RuntimeError::NotAllowedInContext:
        return QStringLiteral("A operação não é permitida neste contexto.");
    case RuntimeError::NotSupported:
        return QStringLiteral(
            "O objeto ou provedor não é capaz de executar a operação solicitada.");
    case RuntimeError::NoSuchItem:
        return QStringLiteral("O item não pode ser encontrado na coleção que corresponde ao nome "
                              "ou ordinal solicitado.");
    case RuntimeError::ObjectClosed:
        return QStringLiteral("A operação não é permitida quando o objeto está fechado.");
    case RuntimeError::ObjectOpen:
        return QStringLiteral("A operação não é permitida quando o objeto está aberto.");
    case RuntimeError::NoConnection:
        return QStringLiteral("A conexão não pode ser usada para realizar esta operação. "
                              "Ela está fechada ou é inválida neste contexto.");
    case RuntimeError::InvalidGridRow:
        return QStringLiteral("Valor de Row inválido");
    case RuntimeError::InvalidGridCol:
        return QStringLiteral("Valor de Col inválido");
    case RuntimeError::InvalidColWidth:
        return QStringLiteral("Valor de ColWidth inválido");
    case RuntimeError::PanelOutOfBounds:
        return QStringLiteral("Índice fora dos limites");
    case RuntimeError::EngineFault:
        return QStringLiteral("Erro não especificado");
    case RuntimeError::SyntaxError:
        return QStringLiteral("Erro de sintaxe (operador faltando) na expressão de consulta");
    case RuntimeError::MissingParameter:
        return QStringLiteral("Nenhum valor foi fornecido para um ou mais parâmetros necessários");
    case RuntimeError::NoSuchTable:
        return QStringLiteral("Não foi possível encontrar a tabela ou consulta de entrada");
    case RuntimeError::RowChanged:
        return QStringLiteral("A linha não pode ser localizada para atualização. Alguns valores "
                              "podem ter sido alterados desde a última leitura.");
    case RuntimeError::MultipleStep:
        return QStringLiteral("A operação de várias etapas gerou erros. "
                              "Verifique cada valor de status.");
    default:
        return QStringLiteral("Erro definido pelo aplicativo ou pelo objeto");
    }
}

} // namespace

RuntimeError::RuntimeError(int number) : RuntimeError(number, publishedDescription(number)) {}

RuntimeError::RuntimeError(int number, QString description)
    : number_(number), description_(std::move(description)),
      what_(QByteArray::number(number) + ": " + description_.toUtf8())
{
}
