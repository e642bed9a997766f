; SPDX-License-Identifier: GPL-3.0-or-later
; The installer for one user, without an administrator's rights. packaging/windows/build.sh calls it:
;   makensis -DVERSION=1.2.3 -DSIZE=KIBIBYTES -DPRODUCTS=FOLDER -DICON=FILE.ico -DOUTPUT=FILE.exe quorel.nsi
; PRODUCTS is laid out as it is to be installed, with the plug-ins at its top. Its files.txt lists the rest: a file a
; line, then the folders, innermost first, each with a backslash at its end.
;
; Command line: /S silent, /VST2DIR=FOLDER, /DOWNGRADE (with /S: an older version may replace a newer one), /D=FOLDER last.
; Exit codes: 0 done, 1 cancelled, 2 it couldn't be done, 3 a newer version is there and stays, 4 installed, but
; quorel-setup failed.

Target amd64-unicode
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include WordFunc.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorel"
!define START_MENU "$SMPROGRAMS\Quorel"
; Where every host looks for a user's own VST3 plug-ins.
!define VST3_BUNDLE "$LOCALAPPDATA\Programs\Common\VST3\Quorel.vst3"
!define VST3_LIBRARY "${VST3_BUNDLE}\Contents\x86_64-win\Quorel.vst3"

Name "Quorel"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Quorel"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
!ifdef QUICK ; for tests
SetCompressor zlib
!else
SetCompressor /SOLID lzma
!endif
BrandingText "Quorel ${VERSION}"
ManifestDPIAware true
AllowSkipFiles off

VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Quorel"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileDescription "Quorel setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey CompanyName "Ostrand"
VIAddVersionKey LegalCopyright "GNU General Public License, version 3 or later"

Var Vst2Folder
Var MayDowngrade

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_WELCOMEFINISHPAGE_BITMAP "${NSISDIR}/Contrib/Graphics/Wizard/nsis3-grey.bmp"
!define MUI_DIRECTORYPAGE_TEXT_TOP "Quorel ${VERSION} is installed for you alone. Close your DAW before you go on."
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_PAGE_HEADER_TEXT "Choose VST2 Folder"
!define MUI_PAGE_HEADER_SUBTEXT "Where does your DAW look for VST2 plug-ins?"
!define MUI_DIRECTORYPAGE_TEXT_TOP "The VST2 plug-in goes into a folder Quorel in this one. Your DAW finds it only if this is one of the folders that it \
searches for VST2 plug-ins: choose one of them here, or add this one to them in your DAW. The VST3 plug-in goes where every DAW looks."
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "VST2 Folder"
!define MUI_DIRECTORYPAGE_VARIABLE $Vst2Folder
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE checkVst2Folder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TEXT "Quorel has been installed. Have your DAW rescan its plug-ins."
!define MUI_FINISHPAGE_RUN "$INSTDIR\Quorel.exe"
!define MUI_FINISHPAGE_RUN_TEXT "Start Quorel without a DAW"
!define MUI_FINISHPAGE_RUN_NOTCHECKED
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\Help\quorel-user-guide.html"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Open the user guide"
!insertmacro MUI_PAGE_FINISH

!define MUI_UNCONFIRMPAGE_TEXT_TOP "Quorel will be removed from this folder and from your plug-in folders. Your own presets, and whatever else \
you changed or added, stay in $APPDATA\Ostrand."
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; Tells what is wrong: in a box, or silently on the standard error stream.
!macro complain TEXT
    ${If} ${Silent}
        System::Call 'kernel32::GetStdHandle(i -12) p .r9'
        FileWrite $9 "Quorel setup: ${TEXT}$\r$\n"
    ${Else}
        MessageBox MB_OK|MB_ICONEXCLAMATION "${TEXT}"
    ${EndIf}
!macroend

!macro refuse TEXT CODE
    !insertmacro complain "${TEXT}"
    SetErrorLevel ${CODE}
    Quit
!macroend

; Jumps back where the user wants to try again; gives up otherwise.
!macro refuseWhileOpen FILE RETRY
    ${IfNot} ${Silent}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${FILE} is in use.$\r$\n$\r$\nClose your DAW and Quorel, then try again." IDRETRY ${RETRY}
        SetErrorLevel 1
        Quit
    ${EndIf}
    !insertmacro refuse "${FILE} is in use: close your DAW and Quorel, then try again." 2
!macroend

; Functions that the uninstaller needs as well.
!macro sharedFunctions UN

; $0 = a file; $1 = "in use" if another program has it open so that it can't be replaced.
Function ${UN}checkInUse
    StrCpy $1 ""
    ${If} ${FileExists} "$0"
        ClearErrors
        FileOpen $1 "$0" a
        ${If} ${Errors}
            StrCpy $1 "in use"
        ${Else}
            FileClose $1
        ${EndIf}
    ${EndIf}
FunctionEnd

; Gives up while a program of ours runs or a host has the plug-in loaded, as replacing half of it would be worse.
Function ${UN}checkNothingRuns
    again:
    ReadRegStr $2 HKCU "${UNINSTALL_KEY}" "VST2Folder"
    !insertmacro checkFile "${UN}" "$2\Quorel\Quorel.dll"
    !insertmacro checkFile "${UN}" "$Vst2Folder\Quorel\Quorel.dll"
    !insertmacro checkFile "${UN}" "${VST3_LIBRARY}"
    !insertmacro checkFile "${UN}" "$INSTDIR\Quorel.exe"
    !insertmacro checkFile "${UN}" "$INSTDIR\quorel-presets.exe"
    !insertmacro checkFile "${UN}" "$INSTDIR\quorel-render.exe"
    !insertmacro checkFile "${UN}" "$INSTDIR\quorel-setup.exe"
    !insertmacro checkFile "${UN}" "$INSTDIR\ostrand-banks.exe"
FunctionEnd

; Removes what the list of the installed version names; nothing where there is no list.
Function ${UN}removeListed
    ClearErrors
    FileOpen $0 "$INSTDIR\files.txt" r
    ${If} ${Errors}
        Return
    ${EndIf}
    ${Do}
        FileRead $0 $1
        ${If} ${Errors}
            ${Break}
        ${EndIf}
        ; Without the line's end.
        ${Do}
            StrCpy $2 $1 1 -1
            ${If} $2 == "$\r"
            ${OrIf} $2 == "$\n"
                StrCpy $1 $1 -1
            ${Else}
                ${Break}
            ${EndIf}
        ${Loop}
        ${If} $1 == ""
            ${Continue}
        ${EndIf}
        ${If} $2 == "\"
            RMDir "$INSTDIR\$1"
        ${Else}
            Delete "$INSTDIR\$1"
        ${EndIf}
        ClearErrors
    ${Loop}
    FileClose $0
    Delete "$INSTDIR\files.txt"
FunctionEnd

!macroend

!macro checkFile UN FILE
    StrCpy $0 "${FILE}"
    Call ${UN}checkInUse
    ${If} $1 == "in use"
        !insertmacro refuseWhileOpen "$0" again
    ${EndIf}
!macroend

; Its own folders and no more: what else somebody put there stays.
!macro removeVst3
    Delete "${VST3_LIBRARY}"
    RMDir "${VST3_BUNDLE}\Contents\x86_64-win"
    RMDir "${VST3_BUNDLE}\Contents"
    RMDir "${VST3_BUNDLE}"
!macroend

!insertmacro sharedFunctions ""
!insertmacro sharedFunctions "un."

; $0 = a folder, which is made if need be; $1 = "writable" if a file can be made in it.
Function checkWritable
    CreateDirectory "$0"
    ClearErrors
    GetTempFileName $1 "$0"
    ${If} ${Errors}
        StrCpy $1 ""
    ${Else}
        Delete "$1"
        StrCpy $1 "writable"
    ${EndIf}
FunctionEnd

; The plug-in's folder can be made and written, or the page stays (silently: the installation ends).
Function checkVst2Folder
    ; Without a backslash at its end, but for a drive's own.
    StrCpy $1 $Vst2Folder 1 -1
    StrLen $2 $Vst2Folder
    ${If} $1 == "\"
    ${AndIf} $2 > 3
        StrCpy $Vst2Folder $Vst2Folder -1
    ${EndIf}

    StrCpy $3 "new"
    ${If} ${FileExists} "$Vst2Folder\Quorel\*.*"
        StrCpy $3 "old"
    ${EndIf}

    StrCpy $0 "$Vst2Folder\Quorel"
    Call checkWritable
    ${If} $1 != "writable"
        ${If} $3 == "new"
            RMDir "$Vst2Folder\Quorel"
        ${EndIf}
        !insertmacro complain "Nothing can be written to $Vst2Folder\Quorel. Choose another VST2 folder, or one below your own \
folders."
        ${If} ${Silent}
            SetErrorLevel 2
            Quit
        ${EndIf}
        Abort
    ${EndIf}
FunctionEnd

; Where the last version went, else the folder that is set up for all plug-ins, if we may write to it, else one of the user's own.
Function proposeVst2Folder
    ReadRegStr $Vst2Folder HKCU "${UNINSTALL_KEY}" "VST2Folder"
    ${If} $Vst2Folder != ""
        Return
    ${EndIf}
    ReadRegStr $0 HKCU "SOFTWARE\VST" "VSTPluginsPath"
    ${If} $0 == ""
        ReadRegStr $0 HKLM "SOFTWARE\VST" "VSTPluginsPath"
    ${EndIf}
    ${If} $0 != ""
    ${AndIf} ${FileExists} "$0\*.*"
        Call checkWritable
        ${If} $1 == "writable"
            StrCpy $Vst2Folder $0
            Return
        ${EndIf}
    ${EndIf}
    StrCpy $Vst2Folder "$LOCALAPPDATA\Programs\Common\VST2"
FunctionEnd

; Of $R0: /VST2DIR=FOLDER, /VST2DIR="FOLDER WITH BLANKS" or "/VST2DIR=FOLDER WITH BLANKS"; empty if it isn't there.
Function vst2FolderOfCommandLine
    StrCpy $Vst2Folder ""
    StrCpy $0 0
    ${Do}
        StrCpy $1 $R0 9 $0
        ${If} $1 == ""
            Return
        ${EndIf}
        ${If} $1 == "/VST2DIR="
            ${Break}
        ${EndIf}
        IntOp $0 $0 + 1
    ${Loop}

    ; What ends it: a quote if there is one before or behind the name.
    StrCpy $3 " "
    ${If} $0 > 0
        IntOp $2 $0 - 1
        StrCpy $1 $R0 1 $2
        ${If} $1 == '"'
            StrCpy $3 '"'
        ${EndIf}
    ${EndIf}
    IntOp $0 $0 + 9
    StrCpy $1 $R0 1 $0
    ${If} $1 == '"'
        StrCpy $3 '"'
        IntOp $0 $0 + 1
    ${EndIf}
    ${Do}
        StrCpy $1 $R0 1 $0
        ${If} $1 == ""
        ${OrIf} $1 == $3
            Return
        ${EndIf}
        StrCpy $Vst2Folder "$Vst2Folder$1"
        IntOp $0 $0 + 1
    ${Loop}
FunctionEnd

Function .onInit
    ${GetParameters} $R0
    Call vst2FolderOfCommandLine
    ${If} $Vst2Folder == ""
        Call proposeVst2Folder
    ${EndIf}
    ClearErrors
    ${GetOptions} $R0 "/DOWNGRADE" $R1
    ${IfNot} ${Errors}
        StrCpy $MayDowngrade "yes"
    ${EndIf}

    ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "DisplayVersion"
    ${If} $0 == ""
        Return
    ${EndIf}
    ${VersionCompare} $0 "${VERSION}" $1
    ${If} $1 == 1
    ${AndIf} $MayDowngrade != "yes"
        ${IfNot} ${Silent}
            MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Quorel $0 is installed, which is newer than ${VERSION}.$\r$\n$\r$\nReplace it by the \
older version?" IDYES goOn
            SetErrorLevel 3
            Quit
        ${EndIf}
        !insertmacro refuse "Quorel $0 is installed, which is newer than ${VERSION}. /DOWNGRADE replaces it." 3
        goOn:
    ${EndIf}
FunctionEnd

Section
    ${If} ${Silent}
        Call checkVst2Folder
    ${EndIf}
    Call checkNothingRuns
    StrCpy $0 "$INSTDIR"
    Call checkWritable
    ${If} $1 != "writable"
        !insertmacro refuse "Nothing can be written to $INSTDIR. Choose another folder." 2
    ${EndIf}

    Call removeListed
    ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "VST2Folder"
    ${If} $0 != ""
    ${AndIf} $0 != $Vst2Folder
        Delete "$0\Quorel\Quorel.dll"
        RMDir "$0\Quorel"
    ${EndIf}

    ClearErrors
    SetOutPath "$INSTDIR"
    File /r /x Quorel.dll /x Quorel.vst3 "${PRODUCTS}\*.*"
    SetOutPath "$Vst2Folder\Quorel"
    File "${PRODUCTS}\Quorel.dll"
    SetOutPath "${VST3_BUNDLE}\Contents\x86_64-win"
    File "${PRODUCTS}\Quorel.vst3\Contents\x86_64-win\Quorel.vst3"
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\Uninstall.exe"
    CreateDirectory "${START_MENU}"
    CreateShortcut "${START_MENU}\Quorel.lnk" "$INSTDIR\Quorel.exe"
    CreateShortcut "${START_MENU}\Quorel user guide.lnk" "$INSTDIR\Help\quorel-user-guide.html"
    CreateShortcut "${START_MENU}\Uninstall Quorel.lnk" "$INSTDIR\Uninstall.exe"

    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Quorel"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Quorel.exe"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "Ostrand"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "VST2Folder" "$Vst2Folder"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
    ${If} ${Errors}
        !insertmacro complain "Not all files could be written. Start the setup again when there is room on the disk."
        SetErrorLevel 4
        Abort
    ${EndIf}

    DetailPrint "Instruments, presets and settings"
    nsExec::ExecToLog '"$INSTDIR\quorel-setup.exe"'
    Pop $0
    ${If} $0 != 0
        !insertmacro complain "Quorel is installed, but not all instruments and presets are: quorel-setup in $INSTDIR says why."
        SetErrorLevel 4
    ${EndIf}
SectionEnd

Section Uninstall
    ReadRegStr $Vst2Folder HKCU "${UNINSTALL_KEY}" "VST2Folder"
    Call un.checkNothingRuns
    ${If} ${FileExists} "$INSTDIR\quorel-setup.exe"
        again:
        DetailPrint "Instruments, presets and settings"
        nsExec::ExecToLog '"$INSTDIR\quorel-setup.exe" --remove'
        Pop $0
        ${If} $0 != 0
            ${If} ${Silent}
                !insertmacro refuse "Not all instruments and presets could be removed: quorel-setup --remove in $INSTDIR says why." 4
            ${EndIf}
            MessageBox MB_ABORTRETRYIGNORE|MB_ICONEXCLAMATION "Not all instruments and presets could be removed. Close all programs that \
may have one of them open, then try again. If you ignore this, they stay where they are." IDRETRY again IDIGNORE goOn
            SetErrorLevel 4
            Quit
        ${EndIf}
        goOn:
    ${EndIf}

    ${If} $Vst2Folder != ""
        Delete "$Vst2Folder\Quorel\Quorel.dll"
        RMDir "$Vst2Folder\Quorel"
    ${EndIf}
    !insertmacro removeVst3
    Delete "${START_MENU}\Quorel.lnk"
    Delete "${START_MENU}\Quorel user guide.lnk"
    Delete "${START_MENU}\Uninstall Quorel.lnk"
    RMDir "${START_MENU}"
    Call un.removeListed
    Delete "$INSTDIR\Uninstall.exe"
    RMDir "$INSTDIR"
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
