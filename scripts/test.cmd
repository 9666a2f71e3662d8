@echo off
rem Builds everything with Visual C++ and runs the native and the desktop tests. Nothing but Visual
rem Studio 2022, or its build tools, with the workload for C++ is needed. The desktop tests use mouse
rem and keyboard: leave both alone until the end. The last lines and the exit code are ctest's.
rem
rem     scripts\test.cmd [CTEST_OPTION...]
rem
rem With the environment variable PICTURES naming a folder, some tests leave pictures there.
setlocal
cd /d "%~dp0.."

set "PATH=%ProgramFiles(x86)%\Microsoft Visual Studio\Installer;%PATH%"
set "studio="
for /f "usebackq delims=" %%i in (`vswhere -latest -products * -version "[17.0,18.0)" -requires Microsoft.VisualStudio.Component.VC.Tools.x86.x64 -property installationPath`) do set "studio=%%i"
if not defined studio (
    echo Visual Studio 2022 or its build tools are missing.
    exit /b 1
)
call "%studio%\Common7\Tools\VsDevCmd.bat" -arch=amd64 -host_arch=amd64 || exit /b 1

cmake --preset windows-msvc || exit /b 1
cmake --build --preset windows-msvc --parallel || exit /b 1
ctest --test-dir build\windows-msvc -C Release --output-on-failure -LE "^slow$" %*
exit /b %ERRORLEVEL%
