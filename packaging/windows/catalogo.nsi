; The installer. packaging/windows/build calls it with
;   VERSION  1.0.0
;   FILES    a file of "File" lines for the folder of programs, REMOVE one of what the uninstaller takes away
;            again
;   MARGIN   the picture beside the first and the last page
;   ICON, OUTPUT
Target amd64-unicode
!include MUI2.nsh
!include nsDialogs.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include x64.nsh

!define NAME "Catálogo TARVO-LINDEN"
!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\TarvoCatalogo"
!define OPEN_CODE 2  ; exit code when the catalogue is open

Name "${NAME}"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES64\Tarvo Linden\Catalogo"
InstallDirRegKey HKLM "${KEY}" "InstallLocation"
RequestExecutionLevel admin
ManifestDPIAware true
SetCompressor /SOLID lzma
BrandingText "Tarvo Linden"
VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=1046 "ProductName" "${NAME}"
VIAddVersionKey /LANG=1046 "CompanyName" "Tarvo Linden"
VIAddVersionKey /LANG=1046 "FileDescription" "Instalação do ${NAME}"
VIAddVersionKey /LANG=1046 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1046 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1046 "LegalCopyright" "2026 Tarvo Linden"

Var Data       ; the data folder
Var DataField

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${MARGIN}"
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TITLE "${NAME}"
!define MUI_WELCOMEPAGE_TEXT "Este assistente instala o catálogo de peças neste computador, ou atualiza o que já está instalado.$\r$\n$\r$\nFeche o catálogo, se ele estiver aberto.$\r$\n$\r$\n$_CLICK"
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION OpenCatalogue
!define MUI_FINISHPAGE_RUN_TEXT "Abrir o catálogo"
!insertmacro MUI_PAGE_WELCOME
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE ReadPointer
!insertmacro MUI_PAGE_DIRECTORY
Page custom AskForData TakeData
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "PortugueseBR"

; --- a catalogue that is open

; A program that runs cannot be opened for writing. The loop ends when it is closed or the user gives up.
!macro RefuseWhileOpen UN
Function ${UN}RefuseWhileOpen
    again:
    StrCpy $1 ""
    Push "CatalogoTarvo.exe"
    Call ${UN}CheckProgram
    Push "Tarvo.exe"
    Call ${UN}CheckProgram
    Push "VerifAtualizCatalogoTarvo.exe"
    Call ${UN}CheckProgram
    ${If} $1 == ""
        Return
    ${EndIf}
    IfSilent give_up
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "O catálogo está aberto neste computador ($1). Feche-o e tente de novo." IDRETRY again
    give_up:
    SetErrorLevel ${OPEN_CODE}
    Quit
FunctionEnd

Function ${UN}CheckProgram
    Exch $0
    Push $2
    ${If} ${FileExists} "$INSTDIR\$0"
        ClearErrors
        FileOpen $2 "$INSTDIR\$0" a
        ${If} ${Errors}
            StrCpy $1 $0
        ${Else}
            FileClose $2
        ${EndIf}
    ${EndIf}
    Pop $2
    Pop $0
FunctionEnd
!macroend
!insertmacro RefuseWhileOpen ""
!insertmacro RefuseWhileOpen "un."

; --- the data folder

; What "Caminho.txt" says so far: UTF-8 or, by hand, the system's own letters.
Function ReadPointer
    ${If} $Data != ""
        Return
    ${EndIf}
    ${IfNot} ${FileExists} "$INSTDIR\Caminho.txt"
        StrCpy $Data "$COMMONPROGRAMDATA\Tarvo Linden\Dados"
        Return
    ${EndIf}
    System::Alloc 4096
    Pop $1
    FileOpen $3 "$INSTDIR\Caminho.txt" r
    System::Call 'kernel32::ReadFile(p r3, p r1, i 4096, *i .r4, p 0)'
    FileClose $3
    ; 8: the bytes must be valid
    System::Call 'kernel32::MultiByteToWideChar(i 65001, i 8, p r1, i r4, w .r0, i ${NSIS_MAX_STRLEN}) i .r5'
    ${If} $5 == 0
        System::Call 'kernel32::MultiByteToWideChar(i 1252, i 0, p r1, i r4, w .r0, i ${NSIS_MAX_STRLEN}) i .r5'
    ${EndIf}
    System::Free $1
    StrCpy $Data $0 $5
FunctionEnd

Function AskForData
    !insertmacro MUI_HEADER_TEXT "Pasta de dados" "Onde estão os dados do catálogo?"
    nsDialogs::Create 1018
    Pop $0
    ${NSD_CreateLabel} 0 0 100% 40u "Indique a pasta em que está, ou estará, o arquivo $\"Tarvo.mdb$\". Vários computadores podem usar a mesma pasta: indique então a pasta compartilhada, como \\servidor\catalogo ou uma letra de unidade."
    Pop $0
    ${NSD_CreateDirRequest} 0 48u 78% 13u "$Data"
    Pop $DataField
    ${NSD_CreateBrowseButton} 80% 47u 20% 15u "Procurar..."
    Pop $0
    ${NSD_OnClick} $0 BrowseData
    ${NSD_CreateLabel} 0 70u 100% 40u "A instalação não altera os dados que estão nessa pasta, e a desinstalação também não."
    Pop $0
    nsDialogs::Show
FunctionEnd

Function BrowseData
    ${NSD_GetText} $DataField $1
    nsDialogs::SelectFolderDialog "Pasta de dados do catálogo" "$1"
    Pop $0
    ${If} $0 != error
        ${NSD_SetText} $DataField "$0"
    ${EndIf}
FunctionEnd

Function TakeData
    ${NSD_GetText} $DataField $0
    ${If} $0 == ""
        MessageBox MB_ICONEXCLAMATION "Indique a pasta de dados."
        Abort
    ${EndIf}
    StrCpy $Data $0
FunctionEnd

; In UTF-8, the path and nothing else: the catalogue takes the whole content as the path.
Function WritePointer
    StrCpy $0 $Data
    System::Call 'kernel32::WideCharToMultiByte(i 65001, i 0, w r0, i -1, p 0, i 0, p 0, p 0) i .r1'
    System::Alloc $1
    Pop $2
    System::Call 'kernel32::WideCharToMultiByte(i 65001, i 0, w r0, i -1, p r2, i r1, p 0, p 0)'
    IntOp $1 $1 - 1
    ClearErrors
    FileOpen $3 "$INSTDIR\Caminho.txt" w
    System::Call 'kernel32::WriteFile(p r3, p r2, i r1, *i .r4, p 0)'
    FileClose $3
    System::Free $2
FunctionEnd

; A folder on this computer that is not there yet, for all who use it. One that is there keeps its rights:
; it may belong to others.
Function MakeDataFolder
    ${If} ${FileExists} "$Data\*.*"
        Return
    ${EndIf}
    CreateDirectory "$Data"
    ; S-1-5-32-545: the users of this computer; M: read, write, delete
    nsExec::Exec 'icacls "$Data" /grant *S-1-5-32-545:(OI)(CI)M'
    Pop $0
FunctionEnd

; As the user, not as the administrator that the installation needed: what the catalogue writes is the user's.
Function OpenCatalogue
    Exec '"$WINDIR\explorer.exe" "$INSTDIR\Tarvo.exe"'
FunctionEnd

; --- installing

Function .onInit
    ${IfNot} ${RunningX64}
        MessageBox MB_ICONSTOP "O catálogo precisa de um Windows de 64 bits." /SD IDOK
        Abort
    ${EndIf}
    SetRegView 64
    SetShellVarContext all
    ${GetParameters} $0
    ${GetOptions} $0 "/DADOS=" $Data
FunctionEnd

Section
    SetShellVarContext all
    SetRegView 64
    Call RefuseWhileOpen
    Call ReadPointer  ; a silent installation has seen no page
    !include "${FILES}"
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\desinstalar.exe"
    Call WritePointer
    Call MakeDataFolder
    CreateDirectory "$SMPROGRAMS\Tarvo Linden"
    CreateShortCut "$SMPROGRAMS\Tarvo Linden\${NAME}.lnk" "$INSTDIR\Tarvo.exe"
    WriteRegStr HKLM "${KEY}" "DisplayName" "${NAME}"
    WriteRegStr HKLM "${KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${KEY}" "DisplayIcon" "$INSTDIR\Tarvo.exe"
    WriteRegStr HKLM "${KEY}" "Publisher" "Tarvo Linden"
    WriteRegStr HKLM "${KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${KEY}" "UninstallString" '"$INSTDIR\desinstalar.exe"'
    WriteRegStr HKLM "${KEY}" "QuietUninstallString" '"$INSTDIR\desinstalar.exe" /S'
    WriteRegDWORD HKLM "${KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${KEY}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKLM "${KEY}" "EstimatedSize" $0
SectionEnd

; --- uninstalling: what was installed, file by file. Data that lie in the same folder stay.

Function un.onInit
    SetRegView 64
    SetShellVarContext all
FunctionEnd

Section Uninstall
    Call un.RefuseWhileOpen
    !include "${REMOVE}"
    Delete "$INSTDIR\Caminho.txt"
    Delete "$INSTDIR\desinstalar.exe"
    RMDir "$INSTDIR"
    RMDir "$PROGRAMFILES64\Tarvo Linden"
    Delete "$SMPROGRAMS\Tarvo Linden\${NAME}.lnk"
    RMDir "$SMPROGRAMS\Tarvo Linden"
    DeleteRegKey HKLM "${KEY}"
SectionEnd
