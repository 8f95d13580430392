@echo off
rem Registers the component for 64-bit and 32-bit hosts. Run it as administrator.
rem "register.cmd /u" removes the entries. They name this folder: remove them before you move or delete it.
setlocal
set options=/s
if /i "%~1"=="/u" set options=/s /u
set failed=0

if "%PROCESSOR_ARCHITECTURE%"=="x86" if not defined PROCESSOR_ARCHITEW6432 goto 32-bit-windows

rem A 32-bit command prompt finds the 64-bit programs in Sysnative.
set system=%SystemRoot%\System32
if exist "%SystemRoot%\Sysnative\regsvr32.exe" set system=%SystemRoot%\Sysnative
"%system%\regsvr32.exe" %options% "%~dp064-bit\ZLMIMFile.dll"
if errorlevel 1 set failed=1
if not exist "%SystemRoot%\SysWOW64\regsvr32.exe" goto end
"%SystemRoot%\SysWOW64\regsvr32.exe" %options% "%~dp032-bit\ZLMIMFile.dll"
if errorlevel 1 set failed=1
goto end

:32-bit-windows
"%SystemRoot%\System32\regsvr32.exe" %options% "%~dp032-bit\ZLMIMFile.dll"
if errorlevel 1 set failed=1

:end
if %failed%==1 echo Failed. Are you an administrator?
exit /b %failed%
