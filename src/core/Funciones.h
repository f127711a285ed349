#pragma once

#include "Connection.h"
#include "ObjectVariable.h"
#include "Recordset.h"

#include <QString>

#include <array>

// The shared module of the system: the five pairs of a connection and a recordset, the settings
// file, the key filters and document checks, and the variables that all forms share.
namespace Funciones {

// Each pair has one owner at a time, which the modal showing of forms guarantees.
inline ObjectVariable<Connection> Conexao1, Conexao2, Conexao3, Conexao4, Conexao5;
inline ObjectVariable<Recordset> Tabela1, Tabela2, Tabela3, Tabela4, Tabela5;

inline QString CaminhoBanco;
inline QString CaminhoLocal;
inline QString TituloEmpresa;
inline QString DocumentoEmpresa;
inline int TamanhoDocumento = 0;
// The company block and the eight lines of the sheets, as last read for printing.
inline QString EnderecoEmpresa, EmailEmpresa, TelefoneEmpresa, SiteEmpresa;
inline std::array<QString, 8> LinhasFicha;

inline int Modo = 0;           // 0 browsing or editing, 1 a new record is in progress
inline double NumeroFicha = 0; // numeric value of the number box of the open record form
// Loop counters that keep their last values across forms; the cash list's print counts by them.
inline int Contador = 0;
inline int ContadorLista = 0;
inline int ContadorListaAnterior = 0;
inline int QuantidadeItens = 0;
inline int FlagRecarga = 0; // how a grid reload treats the recordset's position
inline int ModoConfigura = 0;
inline std::array<QString, 12> FichaCopiada;

// Back to the values of a fresh start, for tests.
void resetShared();

// The path of Banco.ini, beside the executable.
QString CaminhoIni();
QString LeIni(const QString& section, const QString& key, const QString& path);
void GravaIni(const QString& section, const QString& key, const QString& value,
              const QString& path);
// Title and document of the company, for the captions.
void readCompany();

// Leave the connection open and the recordset created but closed. AbreBanco, AbreBanco4 and
// AbreBanco5 show their boxes when that fails and return as if nothing had happened.
void AbreBanco();
void AbreBancoVenda();
void AbreBanco3();
void AbreBanco4();
void AbreBanco5();
// Closing a pair that is not open is an error, and is meant to be.
void FechaBanco();
void FechaBancoVenda();
void FechaBanco3();
void FechaBanco4();
void FechaBanco5();

// Key filters: the key code to use, as text; "0" cancels the key.
QString SoNumero(int KeyAscii);
QString SoValor(int KeyAscii);

// One check digit as text; the empty text for anything that holds a non-digit.
QString DigitoCGC(const QString& digits);
bool ValidaCGC(const QString& document);
bool ValidaCPF(const QString& document);

} // namespace Funciones
