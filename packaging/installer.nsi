; The installer for one user, who needs no administrator for it. cmake/write_installer.cmake gives SOURCE, the folder
; with the files, LISTS, the folder with the lists of them, VERSION, OUTPUT and ICON.
; /S installs without a word, /D=FOLDER, the last argument, says where.
Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma
!include MUI2.nsh
!include LogicLib.nsh

Name "Vaxel ${VERSION}"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Vaxel"
InstallDirRegKey HKCU "Software\Vaxel" "Folder"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Vaxel"
!define APPLICATION "Software\Classes\Applications\Vaxel.exe"
!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\Vaxel.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "French"
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Spanish"

Var HighTime
Var LowTime
Var IsUnchanged

; The time of the files as they were installed. A file that has another one was changed by the user.
!macro ReadFileTime
  ReadRegStr $HighTime HKCU "Software\Vaxel" "HighTime"
  ReadRegStr $LowTime HKCU "Software\Vaxel" "LowTime"
!macroend

!macro LookAt name
  StrCpy $IsUnchanged 1
  ${If} ${FileExists} "$INSTDIR\${name}"
    GetFileTime "$INSTDIR\${name}" $0 $1
    ${If} $0 != $HighTime
    ${OrIf} $1 != $LowTime
      StrCpy $IsUnchanged 0
    ${EndIf}
  ${EndIf}
!macroend

!macro Fixed file name
  File "/oname=$INSTDIR\${name}" "${SOURCE}/${file}"
!macroend
!macro Changeable file name
  !insertmacro LookAt "${name}"
  ${If} $IsUnchanged == 1
    File "/oname=$INSTDIR\${name}" "${SOURCE}/${file}"
  ${EndIf}
!macroend

Section
  SetOutPath "$INSTDIR"
  !insertmacro ReadFileTime
  !include "${LISTS}/folders.nsh"
  !include "${LISTS}/files.nsh"
  GetFileTime "$INSTDIR\Vaxel.exe" $0 $1
  WriteRegStr HKCU "Software\Vaxel" "HighTime" $0
  WriteRegStr HKCU "Software\Vaxel" "LowTime" $1
  WriteRegStr HKCU "Software\Vaxel" "Folder" "$INSTDIR"
  WriteUninstaller "$INSTDIR\Uninstall.exe"

  CreateShortcut "$SMPROGRAMS\Vaxel.lnk" "$INSTDIR\Vaxel.exe"
  ; Many programs have ".dat" files, so Vaxel is offered under "Open with" and opens none of them unasked.
  WriteRegStr HKCU "${APPLICATION}" "FriendlyAppName" "Vaxel"
  WriteRegStr HKCU "${APPLICATION}\DefaultIcon" "" "$INSTDIR\Vaxel.exe,0"
  WriteRegStr HKCU "${APPLICATION}\shell\open\command" "" '"$INSTDIR\Vaxel.exe" "%1"'
  WriteRegStr HKCU "${APPLICATION}\SupportedTypes" ".dat" ""
  WriteRegStr HKCU "${APPLICATION}\SupportedTypes" ".mtr" ""
  WriteRegStr HKCU "Software\Classes\.dat\OpenWithList\Vaxel.exe" "" ""

  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Vaxel"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\Vaxel.exe,0"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

!macroundef Fixed
!macroundef Changeable
!macro Fixed file name
  Delete "$INSTDIR\${name}"
!macroend
!macro Changeable file name
  !insertmacro LookAt "${name}"
  ${If} $IsUnchanged == 1
    Delete "$INSTDIR\${name}"
  ${EndIf}
!macroend

; What the user has changed or made stays, and with it the folder.
Section "Uninstall"
  !insertmacro ReadFileTime
  !include "${LISTS}/files.nsh"
  Delete "$INSTDIR\Uninstall.exe"
  !include "${LISTS}/no_folders.nsh"
  SetOutPath "$TEMP"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Vaxel.lnk"
  DeleteRegKey HKCU "${APPLICATION}"
  DeleteRegKey HKCU "Software\Classes\.dat\OpenWithList\Vaxel.exe"
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey HKCU "Software\Vaxel"
SectionEnd
