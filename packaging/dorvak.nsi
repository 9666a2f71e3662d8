; The setup: for the person alone, without an administrator, in Czech.
;
; scripts/package.sh defines VERSION, CONTENT (the folder with all that is installed), SIZE (of it,
; in KB), FILES (a script that installs the program's files), OUTPUT and PICTURES (the icons).

Unicode true
SetCompressor /SOLID lzma
ManifestDPIAware true
RequestExecutionLevel user
AllowSkipFiles off

!include "MUI2.nsh"
!include "FileFunc.nsh"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Dorvak"
!define START_MENU "$SMPROGRAMS\Dorvak"
; What is installed, so that it can be removed by name: a file a line, then the folders. Its own name
; is one that no list of a person's has: what stands in it is deleted.
!define CONTENT_LIST "odinstalovat.dat"
!define PATIENCE 15000 ; milliseconds that a program has to end

Name "Dorvak"
OutFile "${OUTPUT}"
BrandingText "Dorvak ${VERSION}"
InstallDir "$LOCALAPPDATA\Programs\Dorvak"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=1029 "ProductName" "Dorvak"
VIAddVersionKey /LANG=1029 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1029 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1029 "FileDescription" "Instalace programu Dorvak"
VIAddVersionKey /LANG=1029 "LegalCopyright" "Dorvak"

!define MUI_ICON "${PICTURES}/dorvak.ico"
!define MUI_UNICON "${PICTURES}/dorvak.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "wizard.bmp"
!define MUI_ABORTWARNING

!define MUI_WELCOMEPAGE_TITLE "Instalace programu Dorvak ${VERSION}"
!define MUI_WELCOMEPAGE_TEXT "Dorvak čte strukturu sestavy v CATII V5, udělá z ní kusovník a zapíše ho jako tabulku do výkresu.$\r$\n$\r$\nNainstaluje se jen pro vás, práva správce nejsou potřeba.$\r$\n$\r$\nBěží-li Dorvak, instalace ho zavře. Seznam přitom uloží.$\r$\n$\r$\n$_CLICK"
!insertmacro MUI_PAGE_WELCOME
!define MUI_COMPONENTSPAGE_SMALLDESC
!insertmacro MUI_PAGE_COMPONENTS
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE CheckFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\Dorvak.exe"
!define MUI_FINISHPAGE_RUN_TEXT "Spustit Dorvak"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\prirucka\index.html"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Otevřít příručku"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_FINISH

!define MUI_UNCONFIRMPAGE_TEXT_TOP "Odinstaluje se program a všechno, co s ním přišlo. Vaše seznamy, hodnoty, rozložení a nastavení zůstanou."
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Czech"

; The programs that run from the installation's folder are closed as by their person, who may be
; asked something. Nothing is changed before they have ended.
!macro CLOSE_PROGRAMS un
  ; $0: the class of its window, $1: its file; $9: 1 where it does not end, else 0
  Function ${un}CloseProgram
    Push $2
    Push $3
    Push $4
    Push $5
    Push $6
    StrCpy $6 0
    System::Call 'kernel32::GetLongPathNameW(w "$INSTDIR\$1", w .r2, i ${NSIS_MAX_STRLEN})'
    StrCpy $3 0
    ${Do}
      FindWindow $3 "$0" "" 0 $3
      ${If} $3 == 0
        ${ExitDo}
      ${EndIf}
      System::Call 'user32::GetWindowThreadProcessId(p r3, *i .r4)'
      ; SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION
      System::Call 'kernel32::OpenProcess(i 0x101000, i 0, i r4) p .r4'
      ${If} $4 != 0
        System::Call 'kernel32::QueryFullProcessImageNameW(p r4, i 0, w .r5, *i ${NSIS_MAX_STRLEN})'
        System::Call 'kernel32::GetLongPathNameW(w r5, w .r5, i ${NSIS_MAX_STRLEN})'
        ${If} $5 == $2
          System::Call 'user32::PostMessageW(p r3, i ${WM_CLOSE}, p 0, p 0)'
          System::Call 'kernel32::WaitForSingleObject(p r4, i ${PATIENCE}) i .r6'
          StrCpy $3 0 ; that window may be gone, and the search begins anew
          ${If} $6 != 0
            System::Call 'kernel32::CloseHandle(p r4)'
            ${ExitDo}
          ${EndIf}
        ${EndIf}
        System::Call 'kernel32::CloseHandle(p r4)'
      ${EndIf}
    ${Loop}
    StrCpy $9 0
    ${If} $6 != 0
      StrCpy $9 1
    ${EndIf}
    Pop $6
    Pop $5
    Pop $4
    Pop $3
    Pop $2
  FunctionEnd

  ; $1: a program's file; $9: 1 where it runs, also without a window yet, else 0
  Function ${un}CheckFree
    StrCpy $9 0
    ${If} ${FileExists} "$INSTDIR\$1"
      ClearErrors
      FileOpen $0 "$INSTDIR\$1" a
      ${If} ${Errors}
        StrCpy $9 1
      ${Else}
        FileClose $0
      ${EndIf}
    ${EndIf}
  FunctionEnd

  Function ${un}ClosePrograms
    Push $0
    Push $1
    Push $9
    ${Do}
      StrCpy $0 "DorvakForm1"
      StrCpy $1 "Dorvak.exe"
      Call ${un}CloseProgram
      ${If} $9 == 0
        Call ${un}CheckFree
      ${EndIf}
      ${If} $9 == 0
        StrCpy $0 "CatiaSimWindow"
        StrCpy $1 "CatiaSim.exe"
        Call ${un}CloseProgram
      ${EndIf}
      ${If} $9 == 0
        StrCpy $0 "CatiaSimZkouska" ; on trial
        Call ${un}CloseProgram
      ${EndIf}
      ${If} $9 == 0
        Call ${un}CheckFree
      ${EndIf}
      ${If} $9 == 0
        ${ExitDo}
      ${EndIf}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Program $1 ještě běží.$\r$\n$\r$\nOdpovězte prosím, ptá-li se na něco, nebo ho ukončete, a zkuste to znovu. Zatím se nic nezměnilo." /SD IDCANCEL IDRETRY +2
      Abort "Program $1 ještě běží. Nic se nezměnilo."
    ${Loop}
    Pop $9
    Pop $1
    Pop $0
  FunctionEnd
!macroend
!insertmacro CLOSE_PROGRAMS ""
!insertmacro CLOSE_PROGRAMS "un."

; What an installation has put there, by name. The folders go where they are empty.
!macro REMOVE_CONTENT un
  Function ${un}RemoveContent
    Push $0
    Push $1
    Push $2
    ClearErrors
    FileOpen $0 "$INSTDIR\${CONTENT_LIST}" r
    ${IfNot} ${Errors}
      ${Do}
        FileRead $0 $1
        ${If} ${Errors}
          ${ExitDo}
        ${EndIf}
        StrCpy $1 $1 -2 ; without the end of the line
        StrCpy $2 $1 "" -1
        ${If} $2 == "\"
          RMDir "$INSTDIR\$1"
        ${ElseIf} $1 != ""
          Delete "$INSTDIR\$1"
        ${EndIf}
        ClearErrors
      ${Loop}
      FileClose $0
      Delete "$INSTDIR\${CONTENT_LIST}"
    ${EndIf}
    Delete "${START_MENU}\Dorvak.lnk"
    Delete "${START_MENU}\Dorvak na zkoušku.lnk"
    Delete "${START_MENU}\Příručka.lnk"
    RMDir "${START_MENU}"
    Pop $2
    Pop $1
    Pop $0
  FunctionEnd
!macroend
!insertmacro REMOVE_CONTENT ""
!insertmacro REMOVE_CONTENT "un."

Section "Dorvak" MainSection
  SectionIn RO
  Call ClosePrograms
  Call RemoveContent ; of the version before
  !include "${FILES}"
  ; A list that a person saves over it would go with the next update.
  SetFileAttributes "$INSTDIR\samples\lists\prevodovka.tab" READONLY
  SetOutPath "$INSTDIR" ; where the entries of the start menu start their programs
  CreateDirectory "${START_MENU}"
  CreateShortCut "${START_MENU}\Dorvak.lnk" "$INSTDIR\Dorvak.exe"
  CreateShortCut "${START_MENU}\Příručka.lnk" "$INSTDIR\prirucka\index.html"
  WriteUninstaller "$INSTDIR\odinstalovat.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Dorvak"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Dorvak.exe,0"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "Dorvak"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\odinstalovat.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\odinstalovat.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section "Dorvak na zkoušku" TrialSection
  SetOutPath "$INSTDIR"
  File "${CONTENT}/CatiaSim.exe"
  CreateShortCut "${START_MENU}\Dorvak na zkoušku.lnk" "$INSTDIR\CatiaSim.exe" "--zkouska"
SectionEnd

Section /o "Ikona na ploše" DesktopSection
  SetOutPath "$INSTDIR"
  CreateShortCut "$DESKTOP\Dorvak.lnk" "$INSTDIR\Dorvak.exe"
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${MainSection} "Program, příručka a obvyklé hodnoty."
  !insertmacro MUI_DESCRIPTION_TEXT ${TrialSection} "Napodobená CATIA s převodovkou, na které si vše vyzkoušíte bez skutečné CATIE."
  !insertmacro MUI_DESCRIPTION_TEXT ${DesktopSection} "Zástupce programu na ploše."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; An update keeps the choice that was made before; with /PLOCHA the silent setup makes the icon, too.
Function .onInit
  ${If} ${FileExists} "$INSTDIR\odinstalovat.exe"
    ${IfNot} ${FileExists} "$INSTDIR\CatiaSim.exe"
      !insertmacro UnselectSection ${TrialSection}
    ${EndIf}
    ${If} ${FileExists} "$DESKTOP\Dorvak.lnk"
      !insertmacro SelectSection ${DesktopSection}
    ${EndIf}
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/PLOCHA" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${DesktopSection}
  ${EndIf}
FunctionEnd

; The page of the folder is not left for a place where nothing can be written, nor for another one
; than that of the version before: the person's files stand there.
Function CheckFolder
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 != ""
  ${AndIf} $0 != $INSTDIR
  ${AndIf} ${FileExists} "$0\odinstalovat.exe"
    MessageBox MB_OK|MB_ICONEXCLAMATION "Dorvak už je ve složce $0, i s vašimi soubory. Nainstalujte ho zase tam, nebo ho nejdřív odinstalujte."
    Abort
  ${EndIf}
  ClearErrors
  CreateDirectory "$INSTDIR"
  GetTempFileName $0 "$INSTDIR"
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONEXCLAMATION "Do složky $INSTDIR nelze zapisovat. Zvolte prosím jinou."
    Abort
  ${EndIf}
  Delete $0
FunctionEnd

Section "Uninstall"
  Call un.ClosePrograms
  ${If} ${FileExists} "$INSTDIR\CatiaSim.exe"
    ; What it may have left in the registry. One that does not end is not waited for.
    nsExec::Exec /TIMEOUT=20000 '"$INSTDIR\CatiaSim.exe" --unregister'
    Pop $0
    StrCpy $1 "CatiaSim.exe"
    ${For} $2 1 50
      Call un.CheckFree
      ${If} $9 == 0
        ${ExitFor}
      ${EndIf}
      Sleep 100
    ${Next}
  ${EndIf}
  Call un.RemoveContent
  Delete "$DESKTOP\Dorvak.lnk"
  Delete "$INSTDIR\odinstalovat.exe"
  SetOutPath "$TEMP" ; the folder that is worked in cannot be removed
  ; The log of what was tried out; the lists that were made stay as others do.
  Delete "$INSTDIR\Zkouska\dorvak.log"
  Delete "$INSTDIR\Zkouska\dorvak.old.log"
  Delete "$INSTDIR\Zkouska\diagnostika.txt"
  RMDir "$INSTDIR\Zkouska"
  RMDir "$INSTDIR"
  ; The log and what the program makes only to have a place for files.
  Delete "$LOCALAPPDATA\Dorvak\dorvak.log"
  Delete "$LOCALAPPDATA\Dorvak\dorvak.old.log"
  Delete "$LOCALAPPDATA\Dorvak\diagnostika.txt"
  RMDir "$LOCALAPPDATA\Dorvak"
  RMDir "$APPDATA\Dorvak\Zkouska"
  RMDir "$APPDATA\Dorvak"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
