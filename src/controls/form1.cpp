#include "controls/form1.hpp"

namespace controls {

const std::string_view kDefaultConfiguration =
    "/tlouska_cary;2 \r\n"
    "/pozice;100;100\r\n"
    "/razeni;1;0;2;5;4;6;3\r\n"
    "/sirka;13.88;43.67;15.76;37.51;34.61;31.53;14.68\r\n"
    "/vyska1;4.9\r\n"
    "/vyska2;6.8\r\n"
    "/hlavicka;Pozice;nazev;Kusu;Ciste rozmery;Material;Poznamka;List\r\n"
    "/volny;5\r\n"
    "-/fontname;Arial (TrueType)\r\n"
    "/fontsize1;2.5\r\n"
    "/fontsize2;3\r\n"
    "/sirka1;13.88;43.67;15.76;37.51;34.61;44.6;14.68\r\n";

const std::string_view kSampleStructure =
    // clang-format off
    "\r\n0\tProduct1"
    "\r\n1\tPart 77\tProduct1"
    "\r\n1\tPart 46\tProduct1"
    "\r\n1\tPart 46\tProduct1"
    "\r\n1\tPart 46\tProduct1"
    "\r\n1\tProduct2.2\tProduct1\tProduct1|||||Product2.2*1*"
    "\r\n2\tPart 12\tProduct1|||||Product2.2*1*"
    "\r\n2\tPart 12\tProduct1|||||Product2.2*1*"
    "\r\n2\tProduct3.1\tProduct1|||||Product2.2*1*\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n1\tProduct2.2\tProduct1\tProduct1|||||Product2.2*3*"
    "\r\n2\tPart 12\tProduct1|||||Product2.2*3*"
    "\r\n2\tPart 12\tProduct1|||||Product2.2*3*"
    "\r\n2\tProduct3.1\tProduct1|||||Product2.2*3*\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*3*|||||Product3.1*4*";
// clang-format on

} // namespace controls
