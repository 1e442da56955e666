// nmkFileDir_diagnosis.cpp: the one place where names write to the standard output.
#include <nmktoolbox/files/nmkFileDir.h>

#include <iostream>

#include "deletion_diagnosis.h"

void nmkFileDir::diagnose_file_deletion_failure() const {
    nmk_files::write_deletion_diagnosis(std::cout, m_path.view());
}
