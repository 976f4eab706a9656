#pragma once

// Numbers of controls, menu entries and pictures. Only defines: the resource script reads it too.
// A control of an array has its index behind its name.

// Controls of frmMain
#define ID_Toolbar1 1001
#define ID_Picture1 1002
#define ID_Label01 1003
#define ID_cmbDestination 1004
#define ID_Label02 1005
#define ID_vsBackages 1006
#define ID_lblBackages 1007
#define ID_lblListHeading 1008
#define ID_lsvBackupList 1009
#define ID_lblVaultHeading 1010
#define ID_lsvRestore1 1011
#define ID_lblCopiesHeading 1012
#define ID_lsvRestore2 1013
#define ID_lblNoFileToBack 1014
#define ID_lblNoRestore 1015
#define ID_lblFilter 1016
#define ID_ImageList_0 1017
#define ID_ImageList_1 1018
#define ID_ImageList_2 1019
#define ID_cdDialog 1020
#define ID_sbrStatus 1021

// Controls of frmBusyDialog
#define ID_lblTitle 1031
#define ID_lblMsg 1032
#define ID_lblSubMsg 1033
#define ID_ProgressBar1 1034
#define ID_txtReport 1035
#define ID_chkDontHide 1036
#define ID_cmdCancel 1037
#define ID_tmrBusy 1038

// Controls of frmTrayIcon
#define ID_Timer1 1051
#define ID_Image1_0 1052
#define ID_Image1_1 1053
#define ID_Image1_2 1054
#define ID_Image1_3 1055
#define ID_lblMsg1 1056

// Controls of frmAbout; its title and picture share their numbers with those above
#define ID_lblVer_ 1061
#define ID_lblVer 1062
#define ID_lblRevision_ 1063
#define ID_lblRevision 1064
#define ID_lblD 1065
#define ID_lblWS 1066
#define ID_cmdClose 1067
#define ID_Label1 1068

// Menu of frmMain
#define ID_mnuMain_0 2001
#define ID_mnuFileNew 2002
#define ID_mnuFileOpen 2003
#define ID_mnuFileSave 2004
#define ID_mnuFileSaveAs 2005
#define ID_mnuFileClose 2006
#define ID_mnuFile_6 2007
#define ID_mnuRecentFile_0 2008
#define ID_mnuRecentFile_1 2009
#define ID_mnuRecentFile_2 2010
#define ID_mnuRecentFile_3 2011

// File To Backup
#define ID_mnuMain_1 2021
#define ID_mnuBackup 2022
#define ID_mnulvs3 2023
#define ID_mnuAddFile 2024
#define ID_mnuAddFiles 2025
#define ID_mnuAddFolder 2026
#define ID_mnuEditS 2027
#define ID_mnuDel 2028
#define ID_mnuDelAll 2029
#define ID_mnulvs2 2030
#define ID_mnuOpen 2031

// Restore List
#define ID_mnuMain_2 2041
#define ID_mnuRestore 2042
#define ID_mnuRestoreTo 2043
#define ID_mnuOpenCopy 2044
#define ID_mnuDelCopy 2045
#define ID_mnuDelCopies 2046

// View
#define ID_mnuMain_3 2061
#define ID_mnuViewMethod_0 2062
#define ID_mnuViewMethod_1 2063
#define ID_mnuViewMethod_2 2064
#define ID_mnuViewMethod_3 2065
#define ID_mnuViewMethod_4 2066
#define ID_mnuViewAlign_0 2067
#define ID_mnuViewAlign_1 2068
#define ID_mnuViewAlign_2 2069

// Tools
#define ID_mnuMain_4 2081
#define ID_mnuOptions_0 2082
#define ID_mnuToolRepair 2083
#define ID_mnuToolsDelTemp 2084

// Help
#define ID_mnuMain_5 2091
#define ID_mnuHelpHelp 2092
#define ID_mnuHelpAbout 2093

// The other language; its entry is spelled differently in the two windows
#define ID_munArEn 2101
#define ID_mnuArEn 2101
#define ID_mnuToolEnAr 2102

// Menu of frmTrayIcon
#define ID_mnuProp1 2111
#define ID_mnuProp1Maximize 2112
#define ID_mnuProp1Cancel 2113
#define ID_mnuProp1Exit 2114

// Buttons of Toolbar1
#define ID_Toolbar1_FileNew 3001
#define ID_Toolbar1_FileOpen 3002
#define ID_Toolbar1_FileSave 3003
#define ID_Toolbar1_FileSaveAs 3004
#define ID_Toolbar1_FileExit 3005
#define ID_Toolbar1_ViewLIcons 3006
#define ID_Toolbar1_ViewSIcons 3007
#define ID_Toolbar1_ViewList 3008
#define ID_Toolbar1_ViewDetails 3009
#define ID_Toolbar1_EditAddFile 3010
#define ID_Toolbar1_EditAddFiles 3011
#define ID_Toolbar1_EditAddFolder 3012
#define ID_Toolbar1_Del 3013
#define ID_Toolbar1_EditDelAll 3014
#define ID_Toolbar1_ActionBackup 3015
#define ID_Toolbar1_ActionOpen 3016
#define ID_Toolbar1_ActionRestore 3017
#define ID_Toolbar1_ActionRestoreTo 3018

// Icons; the first one is the program file's own
#define IDI_Program 1
#define IDI_Document 2
#define IDI_Folder 3
#define IDI_File 4
#define IDI_Rule 5
#define IDI_Tray_0 6
#define IDI_Tray_1 7
#define IDI_Tray_2 8
#define IDI_Tray_3 9
#define IDI_Warning 10
#define IDI_WarningMark 11

// Icons of the toolbar
#define IDI_FileNew 101
#define IDI_FileOpen 102
#define IDI_FileSave 103
#define IDI_FileSaveAs 104
#define IDI_FileExit 105
#define IDI_ViewLIcons 106
#define IDI_ViewSIcons 107
#define IDI_ViewList 108
#define IDI_ViewDetails 109
#define IDI_EditAddFile 110
#define IDI_EditAddFiles 111
#define IDI_EditAddFolder 112
#define IDI_Del 113
#define IDI_EditDelAll 114
#define IDI_ActionBackup 115
#define IDI_ActionOpen 116
#define IDI_ActionRestore 117
#define IDI_ActionRestoreTo 118

// Icons on the accent colour, and those turned round for windows from right to left
#define IDI_ActionBackupAccent 141
#define IDI_ActionOpenMirrored 142
#define IDI_ViewLIconsMirrored 143
#define IDI_FileExitMirrored 144
#define IDI_ViewListMirrored 145
#define IDI_ViewDetailsMirrored 146
#define IDI_ViewSIconsMirrored 147

#define IDS_ListType 201
#define IDS_BackUpNow 202
