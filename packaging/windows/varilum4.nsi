; Installs the effect for After Effects and Premiere Pro.
;
; Given by the build: VERSION, LIBRARY (the built Varilum4.aex), OUTPUT.
;   /S        asks and shows nothing
;   /D=FOLDER installs there instead (last on the line, without quotes)
; Both applications look for effects in the shared folder below, whatever their version.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
; The shared folder lies under Program Files, where only administrators write.
RequestExecutionLevel admin

!define NAME "Varilum4"
!define FOLDER "$PROGRAMFILES64\Adobe\Common\Plug-ins\7.0\MediaCore"
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

; Nothing needs choosing: the only page shows that it is done.
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

Function .onInit
  SetRegView 64
  SetShellVarContext all
FunctionEnd

Function un.onInit
  SetRegView 64
  SetShellVarContext all
FunctionEnd

Section "Effect"
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

Section "Uninstall"
  ClearErrors
  Delete "$INSTDIR\Varilum4.aex"
  IfErrors 0 removed
    SetErrorLevel 2
    MessageBox MB_OK|MB_ICONSTOP "Varilum4.aex is in use.$\nClose After Effects and Premiere Pro, then run this again." /SD IDOK
    Abort
  removed:
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
