// The numbers of the resources. A control's number carries its form name.
#pragma once

#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif

#define IDI_DORVAK 1
#define IDI_ASSEMBLY 2
#define IDI_PART 3
#define IDI_APPLY 4
#define IDI_RUNNING 5
#define IDI_DONE 6
#define IDI_FAILED 7

#define IDD_FORM1 100
#define IDD_PAGE1 101
#define IDD_PAGE2 102
#define IDD_PAGE3 103
#define IDD_PAGE4 104
#define IDD_PAGE5 105
#define IDD_INPUT_BOX 106

// The page dialogs as children of the main window
#define ID_PAGE1 201
#define ID_PAGE2 202
#define ID_PAGE3 203
#define ID_PAGE4 204
#define ID_PAGE5 205

#define ID_Check1 1101
#define ID_Check2 1102
#define ID_Check3 1103
#define ID_Command1 1201
#define ID_Command2 1202
#define ID_Command3 1203
#define ID_Command4 1204
#define ID_Command5 1205
#define ID_Command6 1206
#define ID_Command7 1207
#define ID_Command8 1208
#define ID_Command9 1209
#define ID_Command10 1210
#define ID_Command11 1211
#define ID_Command12 1212
#define ID_Command13 1213
#define ID_Command14 1214
#define ID_Command15 1215
#define ID_Command16 1216
#define ID_Command17 1217
#define ID_Command18 1218
#define ID_Command19 1219
#define ID_Command20 1220
#define ID_Command21 1221
#define ID_Command22 1222
#define ID_Command23 1223
#define ID_Command24 1224
#define ID_Command25 1225
#define ID_Command26 1226
#define ID_Command27 1227
#define ID_Command28 1228
#define ID_Command29 1229
#define ID_Command30 1230
#define ID_Command31 1231
#define ID_Command32 1232
#define ID_Command33 1233
#define ID_Command34 1234
#define ID_Command35 1235
#define ID_Command36 1236
#define ID_Command37 1237
#define ID_Command38 1238
#define ID_Command39 1239
#define ID_Command40 1240
#define ID_Command41 1241
#define ID_Combo1 1301
#define ID_Combo2 1302
#define ID_Combo3 1303
#define ID_Combo4 1304
#define ID_Combo5 1305
#define ID_Combo1_Label 1311
#define ID_Combo2_Label 1312
#define ID_Combo3_Label 1313
#define ID_Combo4_Label 1314
#define ID_Combo5_Label 1315
#define ID_Frame1 1401
#define ID_Frame2 1402
#define ID_Frame3 1403
#define ID_List1 1501
#define ID_ListView1 1601
#define ID_ListView2 1602
#define ID_ListView3 1603
#define ID_SSTab1 1701
#define ID_StatusBar1 1702
#define ID_Text1 1801
#define ID_Text2 1802
#define ID_Text3 1803
#define ID_Text4 1804
#define ID_Text5 1805
#define ID_Text6 1806
#define ID_Text7 1807
#define ID_TreeView1 1901

#define ID_m_poslat_jako_tabulku 2001
#define ID_m_vlozit_do_tabulky 2002
#define ID_m_Poslat_jako_text 2003
#define ID_m_Pridat 2004
#define ID_m_Smazat 2005
#define ID_m_Sheet_pridej 2006
#define ID_m_Sheet_smaz 2007
#define ID_m_Zpet 2008
#define ID_m_Znovu 2009
#define ID_m_Sheet_zpet 2010
#define ID_m_Sheet_znovu 2011
#define ID_m_Sheet_vratit_jmena 2012
#define ID_m_Kopirovat_vse 2013
#define ID_m_Vlozit 2014
#define ID_m_Smazat_vybrane 2015
#define ID_m_Doplnit_zname 2016
#define ID_m_Seradit_jmeno 2017
#define ID_m_Seradit_material 2018
#define ID_m_Kopirovat_chybu 2031
#define ID_m_Slozka_protokolu 2032
#define ID_m_Diagnostika 2033
#define ID_m_O_programu 2034
#define ID_m_Ulozit_pracovni 2035
#define ID_m_Otevrit_pracovni 2036

// In the input box
#define ID_InputBox_Prompt 2101
#define ID_InputBox_Text 2102

// In the preview
#define ID_Preview_Canvas 2201
#define ID_Preview_Summary 2202
#define ID_Preview_CurrentRow 2203
#define ID_Preview_Hints 2204
#define ID_Preview_PutRight 2205
