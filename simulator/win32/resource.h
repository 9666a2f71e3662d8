#pragma once

#define IDI_CATIASIM 100
#define IDR_MENU 101
#define IDD_BUSY 102

#define ID_OPEN 201
#define ID_CLOSE_ALL 202
#define ID_WRITE_DRAWING 203
#define ID_WRITE_LOG 204
#define ID_CLEAR_LOG 205
#define ID_EXIT 206
#define ID_CLEAR_SELECTION 207
#define ID_REFUSE_NEXT 210
#define ID_REFUSE_TENTH 211
#define ID_BUSY_SHORT 212
#define ID_BUSY_LONG 213
#define ID_VANISH_NEXT 214
#define ID_VANISH_TENTH 215
#define ID_DISARM 216
#define ID_DETAIL_AS_NUMBER 217
#define ID_SLOW_NEXT 218
#define ID_DIALOG 219
#define ID_RECOMPUTE 220
#define ID_CLOSE_NEXT 221
#define ID_DELETE_NEXT 222
#define ID_CONVERT_USER 230
#define ID_LENGTHS_INCHES 231
#define ID_ZERO_AUTOMATIC 232
#define ID_SHEETS_BEFORE 233
#define ID_EMPTY_REFUSED 234
#define ID_BREAKS_CRLF 235
#define ID_READ_ONLY 236
#define ID_NONE 299

// Menu items made from the open documents, the active drawing's sheets and the sheet's tables.
#define ID_FIRST_DOCUMENT 1000
#define ID_FIRST_SHEET 2000
#define ID_FIRST_TABLE 3000
#define ID_LIST_LENGTH 1000
