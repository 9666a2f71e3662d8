// The status line's popup menu: what helps whoever helps the person from afar.
//
// Actions:
//   m_Kopirovat_chybu_Click   "Kopírovat poslední chybu"
//   m_Slozka_protokolu_Click  "Otevřít složku protokolu"
//   m_Diagnostika_Click       "Diagnostika"
//   m_O_programu_Click        "O programu"
#pragma once

#include <string>

#include "controls/form1.hpp"

namespace shell {

void m_Kopirovat_chybu_Click(controls::Form1& form);
void m_Slozka_protokolu_Click(controls::Form1& form);
// Writes DiagnosisText to diagnostika.txt in the log's folder.
void m_Diagnostika_Click(controls::Form1& form);
void m_O_programu_Click(controls::Form1& form);

// The program, the computer, and what answers of CATIA, a line each thing. No name of a document
// stands there. Whatever cannot be had is there as its error.
std::string DiagnosisText(controls::Form1& form);

} // namespace shell
