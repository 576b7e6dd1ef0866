; Installs Kestrum for the present user, without administrator rights. VERSION, FILES, ICON and OUTPUT come from
; the command line of makensis.
; The programs are of 64 bits, so the setup is too.
Target amd64-unicode
Unicode true
!include "MUI2.nsh"

Name "Kestrum ${VERSION}"
OutFile "${OUTPUT}"
; The programs keep settings and logs beside themselves, so that folder has to be the user's own.
InstallDir "$LOCALAPPDATA\Kestrum"
InstallDirRegKey HKCU "Software\Kestrum" "Folder"
RequestExecutionLevel user
SetCompressor /SOLID lzma
ShowInstDetails nevershow

VIProductVersion "${VERSION}.0.0"
VIAddVersionKey "ProductName" "Kestrum"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Setup of Kestrum"
VIAddVersionKey "LegalCopyright" "GNU General Public License, version 3"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_LICENSE "${FILES}\LICENSE.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\Kestrum.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Kestrum"

Section
  SetOutPath "$INSTDIR"
  ClearErrors
  File "${FILES}\Kestrum.exe"
  File "${FILES}\Posdex.exe"
  File "${FILES}\Orvandi.exe"
  File "${FILES}\Kestrum.txt"
  File "${FILES}\LICENSE.txt"
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  CreateDirectory "$SMPROGRAMS\Kestrum"
  CreateShortCut "$SMPROGRAMS\Kestrum\Kestrum.lnk" "$INSTDIR\Kestrum.exe"
  CreateShortCut "$SMPROGRAMS\Kestrum\Orvandi.lnk" "$INSTDIR\Orvandi.exe"
  CreateShortCut "$SMPROGRAMS\Kestrum\Uninstall Kestrum.lnk" "$INSTDIR\Uninstall.exe"
  WriteRegStr HKCU "Software\Kestrum" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Kestrum"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\Kestrum.exe"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

; Settings, calibrations and logs stay: only what was installed goes.
Section "Uninstall"
  Delete "$INSTDIR\Kestrum.exe"
  Delete "$INSTDIR\Posdex.exe"
  Delete "$INSTDIR\Orvandi.exe"
  Delete "$INSTDIR\Kestrum.txt"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\Uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Kestrum\Kestrum.lnk"
  Delete "$SMPROGRAMS\Kestrum\Orvandi.lnk"
  Delete "$SMPROGRAMS\Kestrum\Uninstall Kestrum.lnk"
  RMDir "$SMPROGRAMS\Kestrum"
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey HKCU "Software\Kestrum"
SectionEnd
