#include "session/global.h"

std::unique_ptr<dao::Workspace> gWS;
std::unique_ptr<dao::Database> gDB;

QString gCaminho;
QString gFaltaDeTravas;
QString TextoEmissao;
bool VerificacaoAutomatica = false;
frmPesquisa* gFrmPesquisa = nullptr;
qint32 gCodigoPeca = 0;
qint32 gCodigoClienteConcorrente = 0;
QString ParametroFormulario;
bool ReiniciarPrograma = false;
