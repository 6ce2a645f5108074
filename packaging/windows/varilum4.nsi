; Installs the effect for After Effects and Premiere Pro.
;
; Given by the build: VERSION, LIBRARY (the built Varilum4.aex), PROGRAM (varilum4.exe), OUTPUT.
;   /S           asks and shows nothing
;   /COMMANDLINE installs the command line, too
;   /D=FOLDER    installs the effect there instead (last on the line, without quotes)
; Both applications look for effects in the shared folder below, whatever their version.

Unicode true
!include "FileFunc.nsh"
!include "Sections.nsh"
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
; The shared folder lies under Program Files, where only administrators write.
RequestExecutionLevel admin

!define NAME "Varilum4"
!define FOLDER "$PROGRAMFILES64\Adobe\Common\Plug-ins\7.0\MediaCore"
!define PROGRAM_FOLDER "$PROGRAMFILES64\${NAME}"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"

Name "${NAME} ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "${FOLDER}\${NAME}"
BrandingText "${NAME} ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow
AllowRootDirInstall false

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${NAME}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "${NAME} set-up"
VIAddVersionKey "CompanyName" "Tovan"
VIAddVersionKey "LegalCopyright" "Copyright (c) Tovan. All rights reserved."

; The one choice is whether the command line is wanted.
Page components
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

Function un.onInit
  SetRegView 64
  SetShellVarContext all
FunctionEnd

Section "Effect for After Effects and Premiere Pro"
  SectionIn RO
  SetOutPath "$INSTDIR"
  ; A running application holds the library of an earlier version.
  ClearErrors
  SetOverwrite try
  File "/oname=Varilum4.aex" "${LIBRARY}"
  IfErrors 0 copied
    SetErrorLevel 2
    MessageBox MB_OK|MB_ICONSTOP "Varilum4.aex cannot be written to $INSTDIR.$\nClose After Effects and Premiere Pro, then run this again." /SD IDOK
    Abort
  copied:
  WriteUninstaller "$INSTDIR\Uninstall Varilum4.exe"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "Tovan"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall Varilum4.exe"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall Varilum4.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; With an effect of its own beside it, which no application holds.
Section /o "Command line (varilum4.exe)" COMMAND_LINE
  SetOutPath "${PROGRAM_FOLDER}"
  ClearErrors
  SetOverwrite try
  File "/oname=varilum4.exe" "${PROGRAM}"
  File "/oname=Varilum4.aex" "${LIBRARY}"
  IfErrors 0 +4
    SetErrorLevel 2
    MessageBox MB_OK|MB_ICONSTOP "varilum4.exe cannot be written to ${PROGRAM_FOLDER}.$\nEnd it where it runs, then run this again." /SD IDOK
    Abort
SectionEnd

; Asked for, or there already.
Function .onInit
  SetRegView 64
  SetShellVarContext all
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/COMMANDLINE" $1
  IfErrors 0 wanted
  IfFileExists "${PROGRAM_FOLDER}\varilum4.exe" wanted
  Return
  wanted:
  !insertmacro SelectSection ${COMMAND_LINE}
FunctionEnd

Section "Uninstall"
  ClearErrors
  Delete "$INSTDIR\Varilum4.aex"
  IfErrors 0 removed
    SetErrorLevel 2
    MessageBox MB_OK|MB_ICONSTOP "Varilum4.aex is in use.$\nClose After Effects and Premiere Pro, then run this again." /SD IDOK
    Abort
  removed:
  ClearErrors
  Delete "${PROGRAM_FOLDER}\varilum4.exe"
  Delete "${PROGRAM_FOLDER}\Varilum4.aex"
  IfErrors 0 +4
    SetErrorLevel 2
    MessageBox MB_OK|MB_ICONSTOP "varilum4.exe is in use.$\nEnd it, then run this again." /SD IDOK
    Abort
  RMDir "${PROGRAM_FOLDER}"
  Delete "$INSTDIR\Uninstall Varilum4.exe"
  ; Folders go when nothing else is in them; what the user put there stays.
  SetOutPath "$TEMP"
  RMDir "$INSTDIR"
  StrCmp "$INSTDIR" "${FOLDER}\${NAME}" 0 elsewhere
    RMDir "${FOLDER}"
    RMDir "$PROGRAMFILES64\Adobe\Common\Plug-ins\7.0"
    RMDir "$PROGRAMFILES64\Adobe\Common\Plug-ins"
    RMDir "$PROGRAMFILES64\Adobe\Common"
    RMDir "$PROGRAMFILES64\Adobe"
  elsewhere:
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
